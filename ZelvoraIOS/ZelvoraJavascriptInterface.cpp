#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/internal/BridgeScript.h"
#include "ZelvoraIOS/internal/MessageDispatch.h"
#include "ZelvoraIOS/internal/joined.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"

namespace zelvora {

std::string ZelvoraJavascriptInterface::scriptSource()
{
    return internal::bridgeScriptSource();
}

void ZelvoraJavascriptInterface::handle(platform::WKScriptMessage const& message,
    std::shared_ptr<platform::WKWebView> const& webView,
    std::shared_ptr<platform::UIViewController> const& viewController)
{
    if (message.name != handlerName)
        return;
    ZelvoraLogger::d(internal::joined({ "JS Message Received: ", description(message.body) }));
    auto const* map = message.body.dictionary();
    auto const* action = map ? map->find("action") : nullptr;
    if (auto const* name = action ? action->text() : nullptr)
        internal::dispatchMessage(*name, *map, webView, viewController);
}

}
