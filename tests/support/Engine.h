#pragma once

// The started engine that most tests run in, and a log back end that keeps every line
// so that tests can compare the exact texts.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "foundation/Logger.h"

namespace VelunTest {

// Collects every line with its channel, as "channel: text".
class ChannelLog : public Dorvan::LogBackend {
public:
    void initialize() override { mInitialized = true; }
    bool isInitialized() override { return mInitialized; }
    Dorvan::SharedPtr<Dorvan::Logger> getLogger(const std::string& name) override {
        return Dorvan::SharedPtr<Dorvan::Logger>(new Line(name, &mLines));
    }
    std::vector<std::string> mLines;

private:
    struct Line : Dorvan::Logger {
        Line(std::string channel, std::vector<std::string>* lines) : mChannel(channel), mLines(lines) {}
        void fatal(const std::string& m) override { add(m); }
        void error(const std::string& m) override { add(m); }
        void warn(const std::string& m) override { add(m); }
        void info(const std::string& m) override { add(m); }
        void debug(const std::string& m) override { add(m); }
        void add(const std::string& m) { mLines->push_back(mChannel + ": " + m); }
        std::string mChannel;
        std::vector<std::string>* mLines;
    };
    bool mInitialized = false;
};

// Each test runs between the engine's startup and shutdown.
class EngineTest : public ::testing::Test {
protected:
    void SetUp() override { core.startup(); }
    void TearDown() override {
        if (core.isStarted())
            core.shutdown();
    }

    Velun::VelunCore& core = Velun::VelunCore::getSingleton();
};

}  // namespace VelunTest
