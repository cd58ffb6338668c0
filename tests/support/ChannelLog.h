#pragma once

#include <string>
#include <vector>

#include "foundation/Logger.h"
#include "foundation/SharedPtr.h"

namespace VelunTest {

// A log back end that collects every line with its channel, as "channel: text".
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

}  // namespace VelunTest
