#import "module/ObjectiveC/ZelvoraSDKError.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraIOS/ZelvoraSDKError.h"
#include "module/ObjectiveC/internal/BridgedError.h"

#include <optional>
#include <string>

NSErrorDomain const ZelvoraSDKErrorDomain = @"ZelvoraSDKErrorDomain";
NSErrorUserInfoKey const ZelvoraSDKErrorCodeKey = @"ZelvoraSDKErrorCode";
NSErrorUserInfoKey const ZelvoraSDKErrorTypeKey = @"ZelvoraSDKErrorType";
NSErrorUserInfoKey const ZelvoraSDKErrorDetailKey = @"ZelvoraSDKErrorDetail";

namespace {

zelvora::ZelvoraSDKError errorOf(ZelvoraSDKErrorCode code, NSString* detail)
{
    using Error = zelvora::ZelvoraSDKError;
    auto text = detail ? std::optional(zelvora::uikit::textOf(detail)) : std::nullopt;
    switch (code) {
    case ZelvoraSDKErrorNetworkError:
        return Error::networkError(std::move(text));
    case ZelvoraSDKErrorInternalApiError:
        return Error::internalApiError(std::move(text));
    case ZelvoraSDKErrorOtherError:
        return Error::otherError(std::move(text));
    case ZelvoraSDKErrorShopIdNotInitialized:
        return Error::shopIdNotInitialized();
    case ZelvoraSDKErrorMediaKeyNotInitialized:
        return Error::mediaKeyNotInitialized();
    case ZelvoraSDKErrorUserKeyNotInitialized:
        return Error::userKeyNotInitialized();
    case ZelvoraSDKErrorAdIdNotInitialized:
        return Error::adIdNotInitialized();
    case ZelvoraSDKErrorInitializing:
        return Error::initializing();
    }
    return Error::otherError(std::move(text));
}

}

NSError* ZelvoraSDKErrorMake(ZelvoraSDKErrorCode code, NSString* detail)
{
    return zelvora::module::bridged(errorOf(code, detail));
}
