#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <cstdint>

namespace zelvora::platform {

/// With the phone's raw values.
enum class UIApplicationState : std::uint8_t { Active = 0, Inactive = 1, Background = 2 };

/// The running app. Main thread. The adapter posts `didBecomeActiveNotification` on the default notification center, on
/// the main thread, when the state has changed to active; an app that is active from the start gets none.
class ZELVORA_API UIApplication {
public:
    /// The notification's name. It comes without user info.
    static constexpr char const* didBecomeActiveNotification = "UIApplicationDidBecomeActiveNotification";

    virtual ~UIApplication() = default;

    /// Active while the app gets the user's input, inactive while it is on the screen without it, or else in the
    /// background.
    [[nodiscard]] virtual UIApplicationState applicationState() const = 0;
    /// Whether an app is registered for the URL's scheme, in upper or lower case. False for a relative URL.
    [[nodiscard]] virtual bool canOpenURL(URL const& url) const = 0;
    /// Passes the URL to that app, asynchronously. No failure is reported; without such an app nothing happens.
    virtual void open(URL const& url) = 0;
};

}
