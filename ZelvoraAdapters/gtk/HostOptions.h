#pragma once

#include "ZelvoraAdapters/gtk/SafeAreaInsets.h"
#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"
#include "ZelvoraPlatform/ServiceAddresses.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::gtk {

/// What the adapter cannot find out on its own. Everything but the names is for phones with notches, for services of
/// one's own and for tests.
struct HostOptions {
    /// The application id. It names the folders in which the app's data is kept.
    std::optional<std::string> bundleIdentifier;
    /// As people know the app; shown in the question about tracking.
    std::string appName;
    std::optional<platform::ServiceAddresses> serviceAddresses {};
    /// A PEM file of an authority to trust beside the system's: see `WebsiteSession` about what pages load.
    std::filesystem::path certificateAuthorityFile {};
    std::vector<TrustedCertificate> trustedCertificates {};
    /// In place of the app's folders in $XDG_DATA_HOME and $XDG_CACHE_HOME.
    std::filesystem::path dataDirectory {};
    SafeAreaInsets safeAreaInsets {};
};

}
