#pragma once

#include "ZelvoraPlatform/Foundation/Error.h"

#import <Foundation/Foundation.h>

namespace zelvora::uikit {

/// The system's error. Without one, an error that says so: not every call of the system that fails gives a reason.
[[nodiscard]] platform::Error errorOf(NSError* error);

}
