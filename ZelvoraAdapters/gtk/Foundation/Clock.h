#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::gtk {

/// The system's wall clock, with microsecond resolution.
class Clock final : public platform::Clock {
public:
    // platform::Clock
    [[nodiscard]] platform::Date now() const override;
};

}
