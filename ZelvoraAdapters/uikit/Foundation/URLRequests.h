#pragma once

#include "ZelvoraPlatform/Foundation/URL.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#import <Foundation/Foundation.h>

#include <optional>

namespace zelvora::uikit {

/// Absent (nil) if the system does not take the URL's text.
[[nodiscard]] NSURL* nativeURL(platform::URL const& url);

/// The address as the system has it; absent for nil.
[[nodiscard]] std::optional<platform::URL> urlOf(NSURL* url);

/// Absent (nil) if the system does not take the URL's text.
[[nodiscard]] NSURLRequest* nativeRequest(platform::URLRequest const& request);

}
