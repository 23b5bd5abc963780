#include "ZelvoraIOS/ZelvoraSDK/internal/CurrentURL.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

namespace zelvora::internal {

std::optional<std::string> getCurrentUrl(GuardedProperties const& properties)
{
    auto const webView = properties.get(&Properties::activeWebView).lock();
    return webView ? webView->currentUrl() : std::nullopt;
}

}
