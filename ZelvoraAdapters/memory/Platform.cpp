#include "ZelvoraAdapters/memory/Platform.h"

#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraAdapters/memory/os/Logger.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

Platform::Platform(Options options) : m_serviceAddresses(std::move(options.serviceAddresses))
{
    m_mainBundle.setBundleIdentifier(std::move(options.bundleIdentifier));
    m_clock.set(options.now);
    m_userDefaults.setContents(std::move(options.storedValues));
    m_application.setApplicationState(options.applicationState);
    m_trackingManager.setStatus(options.trackingStatus);
}

void Platform::runUntilIdle()
{
    for (std::size_t turns = 0; turns < DispatchQueue::runawayLimit; ++turns) {
        if (m_mainQueue.runAll() + m_globalQueue.runAll() + m_urlSession.loaderQueue().runAll() == 0)
            return;
    }
    platform::fatalError("the queues do not come to rest: their blocks submit blocks without end");
}

std::vector<std::shared_ptr<WebView>> Platform::webViews() const
{
    std::vector<std::shared_ptr<WebView>> alive;
    for (auto const& weak : m_webViews) {
        if (auto view = weak.lock())
            alive.push_back(std::move(view));
    }
    return alive;
}

std::unique_ptr<platform::Logger> Platform::makeLogger(std::string const& subsystem, std::string const& category)
{
    return std::make_unique<Logger>(m_log, subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> Platform::makeViewPeer(
    platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view>)
{
    return std::make_unique<UIViewPeer>(m_screen, owner, frame);
}

std::unique_ptr<platform::UIViewController::Peer> Platform::makeViewControllerPeer(
    platform::UIViewController& owner, std::optional<std::string_view>)
{
    return std::make_unique<UIViewControllerPeer>(m_screen, owner);
}

std::shared_ptr<platform::WKUserContentController> Platform::makeUserContentController()
{
    return std::make_shared<UserContentController>(m_screen.calls());
}

std::shared_ptr<platform::WKWebView> Platform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    auto view = std::make_shared<WebView>(m_screen, m_mainQueue, frame, std::move(configuration));
    std::erase_if(m_webViews, [](auto const& weak) { return weak.expired(); });
    m_webViews.push_back(view);
    return view;
}

void Platform::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    m_screen.animate(duration, animations);
}

Platform& install(Options options)
{
    auto platform = std::make_unique<Platform>(std::move(options));
    auto& installed = *platform;
    platform::Platform::install(std::move(platform));
    return installed;
}

}
