#pragma once

#include "ZelvoraIOS/ZelvoraSDKError.h"

#import <Foundation/Foundation.h>

#include <optional>

namespace zelvora::module {

/// The error as hosts see it. Any thread.
[[nodiscard]] NSError* bridged(ZelvoraSDKError const& error);
/// Absent (nil) if there is no error.
[[nodiscard]] NSError* bridged(std::optional<ZelvoraSDKError> const& error);

}
