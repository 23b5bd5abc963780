#include "ZelvoraIOS/ZelvoraSDK/internal/WebViewCreation.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/EntryURL.h"

#include <utility>

namespace zelvora::internal {

std::shared_ptr<ZelvoraWebView> createWebView(GuardedProperties& properties)
{
    auto const [keys, allowsSwipeBack] =
        properties.access([](Properties const& all) { return std::pair(entryKeys(all), all.allowsSwipeBack); });
    if (missingKey(keys)) {
        ZelvoraLogger::e("SDK not fully initialized to get view");
        return nullptr;
    }
    auto webView = std::make_shared<ZelvoraWebView>(platform::CGRect {}, getFinalUrl(keys), allowsSwipeBack);
    properties.set(&Properties::activeWebView, webView);
    return webView;
}

}
