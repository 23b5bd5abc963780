#include "module/ObjectiveC/internal/BridgedError.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#import "module/ObjectiveC/ZelvoraSDKError.h"

#include <utility>

namespace zelvora::module {

namespace {

// In C++ the cases count from 0, which as the code of an error would read as success.
ZelvoraSDKErrorCode codeOf(ZelvoraSDKError::Case errorCase)
{
    return static_cast<ZelvoraSDKErrorCode>(std::to_underlying(errorCase) + 1);
}

static_assert(std::to_underlying(ZelvoraSDKError::Case::networkError) + 1 == ZelvoraSDKErrorNetworkError);
static_assert(std::to_underlying(ZelvoraSDKError::Case::internalApiError) + 1 == ZelvoraSDKErrorInternalApiError);
static_assert(std::to_underlying(ZelvoraSDKError::Case::otherError) + 1 == ZelvoraSDKErrorOtherError);
static_assert(
    std::to_underlying(ZelvoraSDKError::Case::shopIdNotInitialized) + 1 == ZelvoraSDKErrorShopIdNotInitialized);
static_assert(
    std::to_underlying(ZelvoraSDKError::Case::mediaKeyNotInitialized) + 1 == ZelvoraSDKErrorMediaKeyNotInitialized);
static_assert(
    std::to_underlying(ZelvoraSDKError::Case::userKeyNotInitialized) + 1 == ZelvoraSDKErrorUserKeyNotInitialized);
static_assert(std::to_underlying(ZelvoraSDKError::Case::adIdNotInitialized) + 1 == ZelvoraSDKErrorAdIdNotInitialized);
static_assert(std::to_underlying(ZelvoraSDKError::Case::initializing) + 1 == ZelvoraSDKErrorInitializing);

}

NSError* bridged(ZelvoraSDKError const& error)
{
    auto* const userInfo = [NSMutableDictionary<NSErrorUserInfoKey, id> dictionaryWithCapacity:4];
    userInfo[ZelvoraSDKErrorCodeKey] = uikit::stringOf(error.code());
    userInfo[ZelvoraSDKErrorTypeKey] = uikit::stringOf(rawValue(error.errorType()));
    if (auto const description = error.errorDescription())
        userInfo[NSLocalizedDescriptionKey] = uikit::stringOf(*description);
    if (auto const& detail = error.detail())
        userInfo[ZelvoraSDKErrorDetailKey] = uikit::stringOf(*detail);
    return [NSError errorWithDomain:ZelvoraSDKErrorDomain code:codeOf(error.errorCase()) userInfo:userInfo];
}

NSError* bridged(std::optional<ZelvoraSDKError> const& error)
{
    return error ? bridged(*error) : nil;
}

}
