#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

namespace zelvora::examples {

/// Where the service's TLS files are.
struct Certificates {
    std::filesystem::path authority; ///< What clients trust.
    std::filesystem::path server; ///< What the service shows them.
    std::filesystem::path serverKey;
};

/// The certificates kept in the directory when they are good for these names (and will be for another day),
/// else new ones: an authority made on the spot, which signs one server certificate. The authority's own key
/// is never written, so nobody can sign anything else that its clients would trust.
std::expected<Certificates, std::string> prepareCertificates(
    std::filesystem::path const& directory, std::vector<std::string> const& hostNames);

} // namespace zelvora::examples
