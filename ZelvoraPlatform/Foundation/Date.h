#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// A length of time in seconds.
using TimeInterval = double;

/// A moment of wall-clock time.
struct Date {
    TimeInterval timeIntervalSince1970 = 0;

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

    [[nodiscard]] virtual Date now() const = 0;
};

}
