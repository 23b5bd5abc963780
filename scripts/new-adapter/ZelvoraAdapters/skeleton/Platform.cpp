#include "ZelvoraAdapters/skeleton/Platform.h"

#include "ZelvoraAdapters/skeleton/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/skeleton/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/skeleton/WebKit/UserContentController.h"
#include "ZelvoraAdapters/skeleton/WebKit/WebView.h"
#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraAdapters/skeleton/os/Logger.h"

namespace zelvora::skeleton {

std::unique_ptr<platform::Logger> Platform::makeLogger(std::string const& subsystem, std::string const& category)
{
    return std::make_unique<Logger>(subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> Platform::makeViewPeer(
    platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view>)
{
    return std::make_unique<UIViewPeer>(owner, frame);
}

std::unique_ptr<platform::UIViewController::Peer> Platform::makeViewControllerPeer(
    platform::UIViewController& owner, std::optional<std::string_view>)
{
    return std::make_unique<UIViewControllerPeer>(owner);
}

std::shared_ptr<platform::WKUserContentController> Platform::makeUserContentController()
{
    return std::make_shared<UserContentController>();
}

std::shared_ptr<platform::WKWebView> Platform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return std::make_shared<WebView>(frame, configuration);
}

void Platform::animate(platform::TimeInterval, std::function<void()> const&)
{
    missing("Platform::animate");
}

}
