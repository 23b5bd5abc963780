#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/UIKit/UIApplication.h"

namespace zelvora::skeleton {

class UIApplication final : public platform::UIApplication {
public:
    // platform::UIApplication
    [[nodiscard]] platform::UIApplicationState applicationState() const override
    {
        missing("UIApplication::applicationState");
    }
    [[nodiscard]] bool canOpenURL(platform::URL const&) const override { missing("UIApplication::canOpenURL"); }
    void open(platform::URL const&) override { missing("UIApplication::open"); }
};

}
