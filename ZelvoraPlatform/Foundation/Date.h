#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// A length of time in seconds.
using TimeInterval = double;

/// A moment of wall-clock time.
struct Date {
    /// Seconds since 1 January 1970, midnight UTC, leap seconds not counted; negative before it.
    TimeInterval timeIntervalSince1970 = 0;

    /// How many seconds this moment is after `earlier`; negative if it is before it.
    [[nodiscard]] TimeInterval timeIntervalSince(Date earlier) const
    {
        return timeIntervalSince1970 - earlier.timeIntervalSince1970;
    }

    bool operator==(Date const&) const = default;
};

/// The wall clock. It can jump in both directions, because users and time servers set it. Any thread.
class ZELVORA_API Clock {
public:
    virtual ~Clock() = default;

    /// What the system's clock shows, finer than a second.
    [[nodiscard]] virtual Date now() const = 0;
};

}
