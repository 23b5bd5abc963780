#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraIOS/ZelvoraSDKError.h"

#include <optional>
#include <string>

namespace zelvora::internal {

/// What it takes to open the site, as it was at one moment.
struct EntryKeys {
    std::optional<std::string> shopId;
    bool hasApiKey = false;
    std::optional<std::string> userKey;
    std::optional<std::string> adId;
    std::optional<std::string> webURL;
};
[[nodiscard]] EntryKeys entryKeys(Properties const& properties);

/// The error for the first key that is missing, in the order shop id, API key, user key. The site opens without an
/// advertising id.
[[nodiscard]] std::optional<ZelvoraSDKError> missingKey(EntryKeys const& keys);

/// The address of the site with the keys in it. A missing shop id, user key or web address is a programming error that
/// stops the process.
[[nodiscard]] std::string getFinalUrl(EntryKeys const& keys);

}
