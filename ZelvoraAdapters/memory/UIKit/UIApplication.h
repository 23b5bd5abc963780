#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIApplication.h"

#include <set>
#include <string>
#include <vector>

namespace zelvora::platform {
class NotificationCenter;
}

namespace zelvora::memory {

/// The running app. It starts active, on a device where no app is registered for any scheme. Main thread.
class ZELVORA_API UIApplication final : public platform::UIApplication {
public:
    /// The center, on which the app posts that it became active, must outlive it.
    explicit UIApplication(platform::NotificationCenter& notificationCenter) : m_notificationCenter(notificationCenter)
    {
    }

    /// Becoming active posts `didBecomeActiveNotification` before it returns.
    void setApplicationState(platform::UIApplicationState state);
    /// The schemes that `canOpenURL` accepts: in lower case, without the colon, such as "tel".
    void setOpenableSchemes(std::set<std::string> schemes) { m_openableSchemes = std::move(schemes); }

    /// The URLs that `open` was called with, whether or not their schemes can be opened.
    [[nodiscard]] std::vector<platform::URL> const& openedURLs() const { return m_openedURLs; }
    /// The URLs that `canOpenURL` was asked about.
    [[nodiscard]] std::vector<platform::URL> const& askedURLs() const { return m_askedURLs; }

    // platform::UIApplication
    [[nodiscard]] platform::UIApplicationState applicationState() const override { return m_state; }
    [[nodiscard]] bool canOpenURL(platform::URL const& url) const override;
    void open(platform::URL const& url) override;

private:
    platform::NotificationCenter& m_notificationCenter;
    platform::UIApplicationState m_state = platform::UIApplicationState::Active;
    std::set<std::string> m_openableSchemes;
    std::vector<platform::URL> m_openedURLs;
    std::vector<platform::URL> mutable m_askedURLs;
};

}
