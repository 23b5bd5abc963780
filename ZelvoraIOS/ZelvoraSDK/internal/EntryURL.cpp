#include "ZelvoraIOS/ZelvoraSDK/internal/EntryURL.h"

#include "ZelvoraPlatform/fatalError.h"

namespace zelvora::internal {

EntryKeys entryKeys(Properties const& properties)
{
    return {
        .shopId = properties.shopId,
        .hasApiKey = properties.apiKey.has_value(),
        .userKey = properties.userKey,
        .adId = properties.adId,
        .webURL = properties.webURL,
    };
}

std::optional<ZelvoraSDKError> missingKey(EntryKeys const& keys)
{
    if (!keys.shopId)
        return ZelvoraSDKError::shopIdNotInitialized();
    if (!keys.hasApiKey)
        return ZelvoraSDKError::mediaKeyNotInitialized();
    if (!keys.userKey)
        return ZelvoraSDKError::userKeyNotInitialized();
    return std::nullopt;
}

std::string getFinalUrl(EntryKeys const& keys)
{
    if (!keys.shopId || !keys.webURL || !keys.userKey)
        platform::fatalError("the entry URL was asked for without a shop id, a web address or a user key");
    // Nothing is escaped: the site expects the keys as the host passed them.
    return "https://" + *keys.shopId + "." + *keys.webURL + "/?adid=" + keys.adId.value_or("")
        + "&uKey=" + *keys.userKey + "&rid=M-AD-SDK";
}

}
