#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <utility>

namespace zelvora {

/// Looks behind the facade, at what hosts cannot reach.
class ZelvoraSDKInspector final {
public:
    /// A copy of all stored properties as they are now. It holds strongly what the facade holds strongly.
    [[nodiscard]] static auto properties()
    {
        return ZelvoraSDK::shared().withProperties([](auto const& properties) { return properties; });
    }

    /// Puts the facade into a state that its public operations do not lead to: `change([](auto& p) { p.apiURL = "x";
    /// })`.
    template<typename Change>
    static void change(Change const& change)
    {
        ZelvoraSDK::shared().withProperties([&change](auto& properties) { change(properties); });
    }

    [[nodiscard]] static bool isInitializing()
    {
        return ZelvoraSDK::shared().withProperties([](auto const& properties) { return properties.isInitializing; });
    }

    static void sendData() { ZelvoraSDK::shared().sendData(); }
};

}
