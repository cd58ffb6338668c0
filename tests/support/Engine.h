#pragma once

// The started engine that most tests run in, and the log back end (ChannelLog) that
// keeps every line so that tests can compare the exact texts.

#include <gtest/gtest.h>

#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "support/ChannelLog.h"

namespace VelunTest {

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
