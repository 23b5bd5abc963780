#include "examples/developer/observing/ObservedPlatform.h"

#include "examples/developer/observing/ObservedServices.h"

#include <utility>

namespace zelvora::developer {

struct ObservedPlatform::Services {
    explicit Services(ObservedPlatform& platform)
        : clock(platform)
        , defaults(platform)
        , notifications(platform)
        , session(platform)
        , mainQueue(platform)
    {
    }

    ShiftedClock clock;
    ObservedDefaults defaults;
    ObservedNotifications notifications;
    ObservedSession session;
    ObservedQueue mainQueue;
    AnsweredTracking tracking;
};

ObservedPlatform::ObservedPlatform(std::unique_ptr<platform::Platform> target, PlatformObserver& observer)
    : ForwardingPlatform(std::move(target))
    , m_observer(observer)
    , m_services(std::make_unique<Services>(*this))
{
}

ObservedPlatform::~ObservedPlatform() = default;

std::set<std::string> ObservedPlatform::storedKeys() const
{
    return m_services->defaults.keys();
}

void ObservedPlatform::pass(platform::TimeInterval seconds)
{
    m_services->clock.pass(seconds);
}

void ObservedPlatform::tell(std::function<void(PlatformObserver&)> const& event)
{
    if (std::this_thread::get_id() == m_mainThread)
        event(m_observer);
    else
        target().mainQueue().async([&observer = m_observer, event] { event(observer); });
}

platform::Clock& ObservedPlatform::clock()
{
    return m_services->clock;
}

platform::UserDefaults& ObservedPlatform::standardUserDefaults()
{
    return m_services->defaults;
}

platform::NotificationCenter& ObservedPlatform::notificationCenter()
{
    return m_services->notifications;
}

platform::URLSession& ObservedPlatform::urlSession()
{
    return m_services->session;
}

platform::DispatchQueue& ObservedPlatform::mainQueue()
{
    return m_services->mainQueue;
}

platform::ATTrackingManager& ObservedPlatform::trackingManager()
{
    return m_services->tracking;
}

platform::ASIdentifierManager& ObservedPlatform::identifierManager()
{
    return m_services->tracking;
}

std::unique_ptr<platform::Logger> ObservedPlatform::makeLogger(
    std::string const& subsystem, std::string const& category)
{
    return std::make_unique<ObservedLogger>(*this, target().makeLogger(subsystem, category));
}

std::shared_ptr<platform::WKUserContentController> ObservedPlatform::makeUserContentController()
{
    return std::make_shared<ObservedContentController>(*this, target().makeUserContentController());
}

std::shared_ptr<platform::WKWebView> ObservedPlatform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    // The target knows its own controllers only. This pointer to one keeps the observed one, whose handlers it calls.
    if (auto observed = std::dynamic_pointer_cast<ObservedContentController>(configuration.userContentController)) {
        auto& own = observed->target();
        configuration.userContentController = { std::move(observed), &own };
    }
    return target().makeWebView(frame, std::move(configuration));
}

}
