#include "ZelvoraAdapters/memory/ForwardingPlatform.h"

#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

namespace {

platform::Platform& existing(std::unique_ptr<platform::Platform> const& target)
{
    if (!target)
        platform::fatalError("a forwarding platform needs a target");
    return *target;
}

}

ForwardingPlatform::ForwardingPlatform(platform::Platform& target) : m_target(target) { }

ForwardingPlatform::ForwardingPlatform(std::unique_ptr<platform::Platform> target)
    : m_owned(std::move(target))
    , m_target(existing(m_owned))
{
}

ForwardingPlatform::~ForwardingPlatform() = default;

std::optional<platform::ServiceAddresses> ForwardingPlatform::serviceAddresses() const
{
    return m_target.serviceAddresses();
}

bool ForwardingPlatform::isMainThread() const
{
    return m_target.isMainThread();
}

void ForwardingPlatform::complain(std::string const& sentence)
{
    m_target.complain(sentence);
}

platform::Bundle& ForwardingPlatform::mainBundle()
{
    return m_target.mainBundle();
}

platform::Clock& ForwardingPlatform::clock()
{
    return m_target.clock();
}

platform::UserDefaults& ForwardingPlatform::standardUserDefaults()
{
    return m_target.standardUserDefaults();
}

platform::NotificationCenter& ForwardingPlatform::notificationCenter()
{
    return m_target.notificationCenter();
}

platform::URLSession& ForwardingPlatform::urlSession()
{
    return m_target.urlSession();
}

platform::JSONSerialization& ForwardingPlatform::jsonSerialization()
{
    return m_target.jsonSerialization();
}

platform::DispatchQueue& ForwardingPlatform::mainQueue()
{
    return m_target.mainQueue();
}

platform::DispatchQueue& ForwardingPlatform::globalQueue()
{
    return m_target.globalQueue();
}

platform::ATTrackingManager& ForwardingPlatform::trackingManager()
{
    return m_target.trackingManager();
}

platform::ASIdentifierManager& ForwardingPlatform::identifierManager()
{
    return m_target.identifierManager();
}

platform::UIApplication& ForwardingPlatform::application()
{
    return m_target.application();
}

std::unique_ptr<platform::Logger> ForwardingPlatform::makeLogger(
    std::string const& subsystem, std::string const& category)
{
    return m_target.makeLogger(subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> ForwardingPlatform::makeViewPeer(
    platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view> nativeClass)
{
    return m_target.makeViewPeer(owner, frame, nativeClass);
}

std::unique_ptr<platform::UIViewController::Peer> ForwardingPlatform::makeViewControllerPeer(
    platform::UIViewController& owner, std::optional<std::string_view> nativeClass)
{
    return m_target.makeViewControllerPeer(owner, nativeClass);
}

std::shared_ptr<platform::WKUserContentController> ForwardingPlatform::makeUserContentController()
{
    return m_target.makeUserContentController();
}

std::shared_ptr<platform::WKWebView> ForwardingPlatform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return m_target.makeWebView(frame, std::move(configuration));
}

void ForwardingPlatform::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    m_target.animate(duration, animations);
}

}
