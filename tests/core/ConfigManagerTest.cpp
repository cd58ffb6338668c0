#include <gtest/gtest.h>

#include "core/ConfigManager.h"

using namespace Velun;

TEST(ConfigManagerTest, ArgumentsAreKeptUntilCleared) {
    ConfigManager config;
    Dorvan::Vector<std::string> arguments;
    arguments.add("--width");
    arguments.add("640");
    EXPECT_EQ(0, config.parseArguments(arguments, true));
    EXPECT_EQ(0, config.parseArguments(Dorvan::Vector<std::string>(), false));
    ASSERT_EQ(2u, config.getArgumentCount());
    EXPECT_EQ("640", config.getArgument(1));
    config.clearArguments();
    EXPECT_EQ(0u, config.getArgumentCount());
}

TEST(ConfigManagerTest, LoadingConfigurationOpensNoFile) {
    ConfigManager config;
    config.setConfigurationFilename("game.cfg");
    EXPECT_EQ("game.cfg", config.getConfigurationFilename());
    EXPECT_TRUE(config.loadConfiguration("/no/such/dir/velun.cfg"));
    EXPECT_EQ("/no/such/dir/velun.cfg", config.getConfigurationFilename());
}
