#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <vector>

namespace zelvora::bench {

/// A queue of events in a file, as one of the ways keeps it that are compared. What a change wrote survives the death
/// of the process when the call returns.
class EventQueue {
public:
    EventQueue() = default;
    EventQueue(EventQueue const&) = delete;
    EventQueue& operator=(EventQueue const&) = delete;
    virtual ~EventQueue() = default;

    /// Appends as many different events and leaves the file as an app leaves it that saved them one by one.
    virtual void fill(std::size_t count) = 0;
    /// Appends always the same event, in the form that the queue takes it in, because making it is not the queue's
    /// cost.
    virtual void append() = 0;
    /// Drops the oldest events, as after an upload.
    virtual void dropFirst(std::size_t count) = 0;

    [[nodiscard]] virtual std::size_t size() = 0;
    /// The oldest events, as an upload needs them.
    [[nodiscard]] virtual std::vector<platform::Value> first(std::size_t count) = 0;
};

}
