#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/UIKit/UIApplication.h"

#include <gtk/gtk.h>

#include <functional>

namespace zelvora::platform {
class NotificationCenter;
}

namespace zelvora::gtk {

/// The program as the desktop sees it: active while one of its windows is active, in the background while none is
/// shown. It stays active while the focus moves between its windows. URLs are opened by the applications that the
/// desktop has registered for their schemes.
class UIApplication final : public platform::UIApplication {
public:
    /// The notification centre outlives the application. `didResignActive` is called when the app is no longer active.
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
    void updateLater();
    void update();

    platform::NotificationCenter& m_notificationCenter;
    std::function<void()> m_didResignActive;
    platform::UIApplicationState m_state = platform::UIApplicationState::Background;
    GSourcePointer m_update;
};

}
