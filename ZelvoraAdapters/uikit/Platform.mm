#include "ZelvoraAdapters/uikit/Platform.h"

#include "ZelvoraAdapters/uikit/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/uikit/Foundation/Bundle.h"
#include "ZelvoraAdapters/uikit/Foundation/Clock.h"
#include "ZelvoraAdapters/uikit/Foundation/JSONSerialization.h"
#include "ZelvoraAdapters/uikit/Foundation/NotificationCenter.h"
#include "ZelvoraAdapters/uikit/Foundation/URLSession.h"
#include "ZelvoraAdapters/uikit/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/uikit/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/uikit/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/uikit/UIKit/UIApplication.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/uikit/WebKit/UserContentController.h"
#include "ZelvoraAdapters/uikit/WebKit/WebView.h"
#include "ZelvoraAdapters/uikit/os/Logger.h"

#include <utility>

namespace zelvora::uikit {

struct Platform::Services {
    Bundle mainBundle;
    Clock clock;
    UserDefaults userDefaults;
    NotificationCenter notificationCenter;
    URLSession urlSession;
    JSONSerialization jsonSerialization;
    DispatchQueue mainQueue { dispatch_get_main_queue() };
    DispatchQueue globalQueue { dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0) };
    ATTrackingManager trackingManager;
    ASIdentifierManager identifierManager;
    UIApplication application;
};

Platform::Platform() : m_services(std::make_unique<Services>()) { }

Platform::~Platform() = default;

bool Platform::isMainThread() const
{
    return NSThread.isMainThread;
}

void Platform::complain(std::string const& sentence)
{
    Logger("com.zelvora.sdk.ios", "Host").log(platform::OSLogType::Fault, sentence);
}

platform::Bundle& Platform::mainBundle()
{
    return m_services->mainBundle;
}

platform::Clock& Platform::clock()
{
    return m_services->clock;
}

platform::UserDefaults& Platform::standardUserDefaults()
{
    return m_services->userDefaults;
}

platform::NotificationCenter& Platform::notificationCenter()
{
    return m_services->notificationCenter;
}

platform::URLSession& Platform::urlSession()
{
    return m_services->urlSession;
}

platform::JSONSerialization& Platform::jsonSerialization()
{
    return m_services->jsonSerialization;
}

platform::DispatchQueue& Platform::mainQueue()
{
    return m_services->mainQueue;
}

platform::DispatchQueue& Platform::globalQueue()
{
    return m_services->globalQueue;
}

platform::ATTrackingManager& Platform::trackingManager()
{
    return m_services->trackingManager;
}

platform::ASIdentifierManager& Platform::identifierManager()
{
    return m_services->identifierManager;
}

platform::UIApplication& Platform::application()
{
    return m_services->application;
}

std::unique_ptr<platform::Logger> Platform::makeLogger(std::string const& subsystem, std::string const& category)
{
    return std::make_unique<Logger>(subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> Platform::makeViewPeer(
    platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view> nativeClass)
{
    return std::make_unique<UIViewPeer>(owner, UIViewPeer::makeNative(frame, nativeClass));
}

std::unique_ptr<platform::UIViewController::Peer> Platform::makeViewControllerPeer(
    platform::UIViewController& owner, std::optional<std::string_view> nativeClass)
{
    return std::make_unique<UIViewControllerPeer>(owner, UIViewControllerPeer::makeNative(nativeClass));
}

std::shared_ptr<platform::WKUserContentController> Platform::makeUserContentController()
{
    return std::make_shared<UserContentController>([[::WKUserContentController alloc] init]);
}

std::shared_ptr<platform::WKWebView> Platform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return std::make_shared<WebView>(frame, std::move(configuration));
}

void Platform::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    // The system runs the block before it returns.
    auto const* const run = &animations;
    [::UIView animateWithDuration:duration animations:^{ (*run)(); }];
}

}
