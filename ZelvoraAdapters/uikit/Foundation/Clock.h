#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::uikit {

/// The system's wall clock.
class Clock final : public platform::Clock {
public:
    // platform::Clock
    [[nodiscard]] platform::Date now() const override;
};

}
