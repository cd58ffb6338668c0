#pragma once

#include <cstdint>

namespace Dorvan {

// Something that happened at a time in milliseconds.
class Event {
public:
    Event(std::int64_t timestamp = 0) : mTimestamp(timestamp) {}
    virtual ~Event() {}

    std::int64_t getTimestamp() const { return mTimestamp; }

private:
    std::int64_t mTimestamp;
};

// The result of handling an event; no behaviour of its own.
class EventResult {
public:
    virtual ~EventResult() {}
};

// A source of events; no behaviour of its own.
class EventProvider {
public:
    virtual ~EventProvider() {}
};

}  // namespace Dorvan
