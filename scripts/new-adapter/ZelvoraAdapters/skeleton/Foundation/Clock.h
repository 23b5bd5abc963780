#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::skeleton {

class Clock final : public platform::Clock {
public:
    // platform::Clock
    [[nodiscard]] platform::Date now() const override { missing("Clock::now"); }
};

}
