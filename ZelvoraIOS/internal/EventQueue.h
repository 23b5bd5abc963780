#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <cstddef>

namespace zelvora::internal {

/// The queue of tracking events: one array in the store, oldest event first, without a lifetime. Each change is one
/// critical section, so that an event saved while uploaded ones are being removed is never lost. Any thread.
///
/// Log lines are written outside the critical section. The preferences are written inside, because the next change must
/// find what this one wrote. An observer that they call within the write may change the queue, too, on the same thread:
/// its change comes after this one. It must not wait for another thread that changes the queue.
class EventQueue final {
public:
    /// Appends an event. One that nests too deep to be uploaded is dropped with an error line.
    static void save(platform::Dictionary const& event);
    /// Empty if nothing, or something else than an array of dictionaries, is stored.
    [[nodiscard]] static platform::Array events();
    /// Removes the oldest events, or all if there are fewer. A negative count is refused with an error line.
    static void removeFirst(std::ptrdiff_t count);
    static void clear();
};

}
