#pragma once

#import "ZelvoraExport.h"

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// The domain of every error that the SDK reports.
FOUNDATION_EXPORT ZELVORA_EXPORT NSErrorDomain const ZelvoraSDKErrorDomain NS_REFINED_FOR_SWIFT;

/// What went wrong. Swift hosts see the enumeration `ZelvoraSDKError` instead, whose first three cases carry the
/// detail.
typedef NS_ERROR_ENUM(ZelvoraSDKErrorDomain, ZelvoraSDKErrorCode) {
    /// Not reported by the SDK, which reports a failure of the network as `ZelvoraSDKErrorInternalApiError`.
    ZelvoraSDKErrorNetworkError = 1,
    /// The lookup of the shop id failed.
    ZelvoraSDKErrorInternalApiError,
    ZelvoraSDKErrorOtherError,
    ZelvoraSDKErrorShopIdNotInitialized,
    ZelvoraSDKErrorMediaKeyNotInitialized,
    ZelvoraSDKErrorUserKeyNotInitialized,
    /// Not reported by the SDK, which works without an advertising id.
    ZelvoraSDKErrorAdIdNotInitialized,
    ZelvoraSDKErrorInitializing,
} NS_REFINED_FOR_SWIFT;

// The keys of an error's `userInfo`. Its `localizedDescription` is a Korean text for the user, followed by the detail.

/// The fixed code to compare with: text such as "E100" or "W001".
FOUNDATION_EXPORT ZELVORA_EXPORT NSErrorUserInfoKey const ZelvoraSDKErrorCodeKey NS_REFINED_FOR_SWIFT;
/// The severity: "ERROR" or "WARNING".
FOUNDATION_EXPORT ZELVORA_EXPORT NSErrorUserInfoKey const ZelvoraSDKErrorTypeKey NS_REFINED_FOR_SWIFT;
/// What went wrong, in English: text, absent if there is none.
FOUNDATION_EXPORT ZELVORA_EXPORT NSErrorUserInfoKey const ZelvoraSDKErrorDetailKey NS_REFINED_FOR_SWIFT;

/// An error like those of the SDK. Only the first three codes have a detail; with the others it is ignored. A code that
/// the SDK does not have is `ZelvoraSDKErrorOtherError`. Any thread.
FOUNDATION_EXPORT ZELVORA_EXPORT NSError* ZelvoraSDKErrorMake(
    ZelvoraSDKErrorCode code, NSString* _Nullable detail) NS_REFINED_FOR_SWIFT;

NS_ASSUME_NONNULL_END
