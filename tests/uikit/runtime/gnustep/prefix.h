// Force-included in the Linux behaviour build: what the phone's Foundation has and gnustep-base 1.28 lacks.
#pragma once
#include "gnustep_prefix.h"
#define NS_SWIFT_NAME(n)
#define NS_REFINED_FOR_SWIFT
#define NS_SWIFT_UNAVAILABLE(m)
#define NS_SWIFT_UI_ACTOR
#define NS_SWIFT_SENDABLE
#define NS_EXTENSIBLE_STRING_ENUM
#define API_AVAILABLE_IOS(v)
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_ERROR_ENUM(_domain, _name)                                                                                  \
    enum _name : NSInteger _name;                                                                                      \
    enum _name : NSInteger
#define FOUNDATION_EXPORT extern "C"
#ifdef __OBJC__
@class NSString;
typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
#if !__has_feature(objc_arc)
#define __weak
#endif
#endif
