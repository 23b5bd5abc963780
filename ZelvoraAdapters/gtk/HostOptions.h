#pragma once

#include "ZelvoraAdapters/shared/Layout/SafeAreaInsets.h"
#include "ZelvoraPlatform/ServiceAddresses.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::gtk {

using shared::SafeAreaInsets;

/// A server of your own, whose certificate no public authority has signed.
struct TrustedCertificate {
    /// Its name, without a port.
    std::string host;
    /// The server's certificate, a PEM file.
    std::filesystem::path file;
};

/// What the adapter cannot find out by itself. Most hosts set the two names only; the other options are for phones with
/// notches, for services of your own and for tests.
struct HostOptions {
    /// The application id, such as "com.example.shop". It names the folders in which the app's data is kept. What
    /// `g_application_id_is_valid` refuses stops the process.
    std::optional<std::string> bundleIdentifier;
    /// The name of the app as its users know it; shown when they are asked for permission to track.
    std::string appName;
    /// Used instead of the addresses that are compiled in.
    std::optional<platform::ServiceAddresses> serviceAddresses {};
    /// A PEM file of an authority to trust in addition to the system's: for the SDK's own requests and for the pages
    /// themselves. The engine does not consult it for what a page loads from other hosts; those need
    /// `trustedCertificates`. A file that cannot be read is ignored, with a warning that names it.
    std::filesystem::path certificateAuthorityFile {};
    /// Those whose file cannot be read are ignored, with a warning each.
    std::vector<TrustedCertificate> trustedCertificates {};
    /// Used instead of the app's folders in $XDG_DATA_HOME and $XDG_CACHE_HOME.
    std::filesystem::path dataDirectory {};
    /// What notches and bars of the phone take of the screen's edges, in points.
    SafeAreaInsets safeAreaInsets {};
};

}
