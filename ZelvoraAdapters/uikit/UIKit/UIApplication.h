#pragma once

#include "ZelvoraPlatform/UIKit/UIApplication.h"

namespace zelvora::uikit {

/// The running app. The system itself posts that it has become active, and `canOpenURL` knows only the schemes that the
/// host's Info.plist names.
class UIApplication final : public platform::UIApplication {
public:
    // platform::UIApplication
    [[nodiscard]] platform::UIApplicationState applicationState() const override;
    [[nodiscard]] bool canOpenURL(platform::URL const& url) const override;
    void open(platform::URL const& url) override;
};

}
