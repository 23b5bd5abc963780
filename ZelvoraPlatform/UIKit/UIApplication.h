#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <cstdint>

namespace zelvora::platform {

/// With the phone's raw values.
enum class UIApplicationState : std::uint8_t { Active = 0, Inactive = 1, Background = 2 };

/// The running app. Main thread. The adapter posts `didBecomeActiveNotification` on the default notification centre, on
/// the main thread, after the state has become active.
class ZELVORA_API UIApplication {
public:
    static constexpr char const* didBecomeActiveNotification = "UIApplicationDidBecomeActiveNotification";

    virtual ~UIApplication() = default;

    [[nodiscard]] virtual UIApplicationState applicationState() const = 0;
    /// Whether some app is registered for the URL's scheme.
    [[nodiscard]] virtual bool canOpenURL(URL const& url) const = 0;
    /// Hands the URL to that app, later; nothing is reported.
    virtual void open(URL const& url) = 0;
};

}
