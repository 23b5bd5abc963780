#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <cstdint>
#include <optional>

namespace zelvora::platform {

/// With the phone's raw values.
enum class WKNavigationActionPolicy : std::uint8_t { Cancel = 0, Allow = 1 };

/// A navigation that a page or its user is about to make: in the page, in one of its frames, or to a new window, which
/// never opens.
struct WKNavigationAction {
    /// The request's URL, if it has one.
    std::optional<URL> url;

    bool operator==(WKNavigationAction const&) const = default;
};

/// Decides on navigations and is told of them. Main thread.
class ZELVORA_API WKNavigationDelegate {
public:
    /// Takes the decision on one navigation.
    using DecisionHandler = CompletionHandler<void(WKNavigationActionPolicy)>;

    virtual ~WKNavigationDelegate() = default;

    /// Called before each navigation, which waits for the decision. `decisionHandler` must be called exactly once, here
    /// or later on the main thread; it may outlive the web view and then has no effect.
    virtual void decidePolicyFor(WKNavigationAction const& action, DecisionHandler decisionHandler) = 0;
    /// The web view began to load another page.
    virtual void didStartProvisionalNavigation() { }
};

}
