#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/SDKCore.h"

namespace zelvora {

/// Reads and changes what is behind the facade and out of a host's reach.
class ZelvoraSDKInspector final {
public:
    /// A copy of all properties as they are now, with strong references where the SDK has strong references.
    [[nodiscard]] static internal::Properties properties()
    {
        return core().properties.access([](auto const& properties) { return properties; });
    }

    /// Puts the SDK into a state that its public operations do not lead to: `change([](auto& p) { p.apiURL = "x"; })`.
    template<typename Change>
    static void change(Change const& change)
    {
        core().properties.access([&change](auto& properties) { change(properties); });
    }

    [[nodiscard]] static bool isInitializing() { return core().properties.get(&internal::Properties::isInitializing); }

    static void sendData() { core().identityUpload.sendData(); }

private:
    static internal::SDKCore& core() { return internal::SDKCore::shared(); }
};

}
