#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <cstdint>
#include <optional>

namespace zelvora::platform {

/// With the phone's raw values.
enum class WKNavigationActionPolicy : std::uint8_t { Cancel = 0, Allow = 1 };

/// A navigation that a page or its user is about to make, in whatever frame.
struct WKNavigationAction {
    /// The request's URL, where it has one.
    std::optional<URL> url;

    bool operator==(WKNavigationAction const&) const = default;
};

/// Decides on and hears of navigations. Main thread.
class ZELVORA_API WKNavigationDelegate {
public:
    using DecisionHandler = CompletionHandler<void(WKNavigationActionPolicy)>;

    virtual ~WKNavigationDelegate() = default;

    virtual void decidePolicyFor(WKNavigationAction const& action, DecisionHandler decisionHandler) = 0;
    virtual void didStartProvisionalNavigation() { }
};

}
