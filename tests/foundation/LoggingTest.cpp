#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "core/LogManager.h"
#include "core/SimpleLogger.h"
#include "core/VelunCore.h"

using namespace Velun;
using Dorvan::Logger;
using Dorvan::SharedPtr;

namespace {

struct RecordingLogger : Logger {
    explicit RecordingLogger(std::vector<std::string>* lines) : mLines(lines) {}
    void fatal(const std::string& m) override { mLines->push_back("fatal:" + m); }
    void error(const std::string& m) override { mLines->push_back("error:" + m); }
    void warn(const std::string& m) override { mLines->push_back("warn:" + m); }
    void info(const std::string& m) override { mLines->push_back("info:" + m); }
    void debug(const std::string& m) override { mLines->push_back("debug:" + m); }
    std::vector<std::string>* mLines;
};

struct RecordingBackend : Dorvan::LogBackend {
    void initialize() override {
        ++mInitializations;
        mInitialized = true;
    }
    bool isInitialized() override { return mInitialized; }
    SharedPtr<Logger> getLogger(const std::string& name) override {
        mChannels.push_back(name);
        return SharedPtr<Logger>(new RecordingLogger(&mLines));
    }
    int mInitializations = 0;
    bool mInitialized = false;
    std::vector<std::string> mChannels;
    std::vector<std::string> mLines;
};

}  // namespace

TEST(LogManagerTest, DefaultLoggerWritesPlainLines) {
    LogManager logs;
    SharedPtr<Logger> a = logs.getLogger("one");
    SharedPtr<Logger> b = logs.getLogger("other");
    EXPECT_EQ(a.get(), b.get());

    testing::internal::CaptureStderr();
    a->fatal("f");
    a->error("something failed");
    a->warn("w");
    a->info("");
    a->debug("d");
    EXPECT_EQ("f\nsomething failed\nw\n\nd\n", testing::internal::GetCapturedStderr());
}

TEST(LogManagerTest, BackendGetsChannelNamesAndIsInitialisedOnce) {
    LogManager logs;
    RecordingBackend first;
    logs.registerBackend(first);
    EXPECT_EQ(1, first.mInitializations);
    logs.getLogger("loader.ms3d.objectloader")->error("bad file");
    ASSERT_EQ(1u, first.mChannels.size());
    EXPECT_EQ("loader.ms3d.objectloader", first.mChannels[0]);
    EXPECT_EQ("error:bad file", first.mLines[0]);

    RecordingBackend second;
    second.mInitialized = true;
    logs.registerBackend(second);
    EXPECT_EQ(0, second.mInitializations);
    logs.getLogger("terrain")->warn("x");
    EXPECT_EQ(1u, first.mChannels.size());
    EXPECT_EQ("terrain", second.mChannels[0]);
}
