#include "ZelvoraIOS/internal/NavigationPolicy.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraPlatform/Platform.h"

#include <algorithm>
#include <string>

namespace zelvora::internal {

using platform::WKNavigationActionPolicy;

namespace {

bool isWebScheme(std::string scheme)
{
    // Not by tolower, which depends on the locale that the host has set.
    std::ranges::transform(
        scheme, scheme.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return scheme == "http" || scheme == "https" || scheme == "about";
}

void openInSystem(platform::URL const& url)
{
    auto& application = platform::Platform::current().application();
    if (application.canOpenURL(url)) {
        application.open(url);
        return;
    }
    ZelvoraLogger::e("Cannot open external scheme: " + url.absoluteString());
}

}

WKNavigationActionPolicy decidePolicyFor(platform::WKNavigationAction const& action)
{
    auto const scheme = action.url ? action.url->scheme() : std::nullopt;
    if (!action.url || (scheme && isWebScheme(*scheme)))
        return WKNavigationActionPolicy::Allow;
    openInSystem(*action.url);
    return WKNavigationActionPolicy::Cancel;
}

}
