#pragma once

#import "ZelvoraExport.h"

#import <Foundation/Foundation.h>

/// 1.0. May be read on any thread.
FOUNDATION_EXPORT ZELVORA_EXPORT double const ZelvoraIOSVersionNumber NS_REFINED_FOR_SWIFT;
/// The same as text. Swift hosts see a `String`.
FOUNDATION_EXPORT ZELVORA_EXPORT char const ZelvoraIOSVersionString[] NS_REFINED_FOR_SWIFT;
