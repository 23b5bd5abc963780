#pragma once

#include "ZelvoraPlatform/WebKit/WKNavigationDelegate.h"

namespace zelvora::internal {

/// Keeps web pages in the web view. A link of any other scheme is opened by the system, or logged as an error if no app
/// handles it, and its navigation is cancelled. Main thread.
[[nodiscard]] platform::WKNavigationActionPolicy decidePolicyFor(platform::WKNavigationAction const& action);

}
