#include "Shop.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <optional>
#include <utility>

using namespace zelvora;

namespace {

void leave(platform::UIViewController& container)
{
    // A container that was pushed is popped; the others were presented.
    if (auto const navigation = container.navigationController())
        navigation->popViewController(platform::Animated::Yes);
    else
        container.dismiss(platform::Animated::Yes);
}

void goBack(platform::UIViewController& container)
{
    auto const webView = ZelvoraSDK::shared().activeWebView();
    if (webView && webView->canGoBack())
        webView->goBack();
    else
        leave(container);
}

}

std::shared_ptr<Shop> Shop::create(Parts parts)
{
    std::shared_ptr<Shop> shop(new Shop(std::move(parts)));
    // A page has functions for the actions that were there when its screen was opened.
    shop->registerActions();
    return shop;
}

Shop::Shop(Parts parts) : m_parts(std::move(parts)) { }

void Shop::open(std::shared_ptr<platform::UIViewController> const& presenter)
{
    if (!m_isConfigured)
        initialize();
    // A footer that a page has hidden would be hidden at this visit, too.
    ZelvoraSDK::shared().setFooterVisible(true);
    ZelvoraSDK::shared().start(presenter);
}

void Shop::registerActions()
{
    ZelvoraSDK::shared().addCustomAction("share", [weak = weak_from_this()](std::optional<std::string> const& text) {
        if (auto const shop = weak.lock())
            shop->m_parts.share(text.value_or(""));
    });
}

void Shop::initialize()
{
    m_isConfigured = true;
    auto const header = [weak = weak_from_this()](platform::UIViewController& container) -> View {
        auto const shop = weak.lock();
        // The container owns its header, so the header may refer to it.
        return shop ? shop->m_parts.makeHeader([&container] { goBack(container); }) : nullptr;
    };
    auto const footer = [weak = weak_from_this()](platform::UIViewController&) -> View {
        auto const shop = weak.lock();
        return shop ? shop->m_parts.makeFooter() : nullptr;
    };
    auto const onError = [weak = weak_from_this()](std::optional<ZelvoraSDKError> const& error) {
        // Errors of the lookup arrive on a background thread.
        platform::Platform::current().mainQueue().async([weak, error] {
            if (auto const shop = weak.lock(); shop && error)
                shop->report(*error);
        });
    };
    std::shared_ptr<ZelvoraSDKDelegate> const delegate(shared_from_this(), this);
    // The local service knows this API key; your service gives you another.
    ZelvoraSDK::shared().initialize("user-key", "demo-key", /* isTrackingEnabled */ true, /* isDev */ false,
        /* allowsSwipeBack */ true, header, footer, delegate, onError);
}

void Shop::report(ZelvoraSDKError const& error)
{
    // The lookup failed, and the attempt goes on: the SDK may still wait for the user's answer about tracking. At its
    // end the waiting start fails, too, and that is what the user reads.
    if (error.code() == "E200") {
        ZelvoraLogger::w(error.errorDescription().value_or("E200"));
        return;
    }
    // The attempt has ended, and the user's next tap tries again. A tap between its end and this report only asked for
    // the shop once more, and gets an E001 of its own, after the user has read one.
    if (error.code() == "E001" && !std::exchange(m_isConfigured, false))
        return;
    m_parts.showError(std::string(error.code()));
}

bool Shop::zelvoraSDKShouldHandleBackAction(ZelvoraWebView&)
{
    return true;
}

void Shop::zelvoraSDKWillDismiss()
{
    m_parts.didLeave();
}
