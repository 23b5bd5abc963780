#pragma once

#include "ZelvoraPlatform/UIKit/UIApplication.h"

#include <gtk/gtk.h>

#include <functional>

namespace zelvora::platform {
class NotificationCenter;
}

namespace zelvora::gtk {

/// The program as the desktop sees it: active while one of its windows is, in the background while none is shown. The
/// focus that moves from one of its windows to another leaves it active. Other schemes go to the applications that
/// the desktop has registered for them.
class UIApplication final : public platform::UIApplication {
public:
    /// The notification centre outlives the application. `didResignActive` is called when the app was active and is not
    /// any more.
    UIApplication(platform::NotificationCenter& notificationCenter, std::function<void()> didResignActive);
    UIApplication(UIApplication const&) = delete;
    UIApplication& operator=(UIApplication const&) = delete;
    ~UIApplication() override;

    // platform::UIApplication
    [[nodiscard]] platform::UIApplicationState applicationState() const override { return m_state; }
    [[nodiscard]] bool canOpenURL(platform::URL const& url) const override;
    void open(platform::URL const& url) override;

private:
    void watchWindows();
    void lookLater();
    void look();

    platform::NotificationCenter& m_notificationCenter;
    std::function<void()> m_didResignActive;
    platform::UIApplicationState m_state = platform::UIApplicationState::Background;
    guint m_look = 0;
};

}
