#include "examples/developer/observing/ObservedServices.h"

#include "examples/developer/observing/ObservedPlatform.h"

#include <utility>

namespace zelvora::developer {

namespace {

// Nobody listens at this port, so the loader fails as it does without a network: on its own queue, with its own error.
platform::URL nowhere()
{
    return *platform::URL::parse("https://127.0.0.1:1/");
}

}

ObservedDefaults::ObservedDefaults(ObservedPlatform& platform)
    : ForwardingUserDefaults(platform.preferences())
    , m_platform(platform)
{
}

std::set<std::string> ObservedDefaults::keys() const
{
    std::scoped_lock const lock(m_mutex);
    return m_keys;
}

void ObservedDefaults::didStore(std::string const& key)
{
    {
        std::scoped_lock const lock(m_mutex);
        m_keys.insert(key);
    }
    m_platform.tell([](PlatformObserver& observer) { observer.didWritePreferences(); });
}

void ObservedDefaults::setObject(std::optional<platform::Value> value, std::string const& key)
{
    ForwardingUserDefaults::setObject(std::move(value), key);
    didStore(key);
}

void ObservedDefaults::setDouble(double number, std::string const& key)
{
    ForwardingUserDefaults::setDouble(number, key);
    didStore(key);
}

void ObservedDefaults::removeObject(std::string const& key)
{
    ForwardingUserDefaults::removeObject(key);
    m_platform.tell([](PlatformObserver& observer) { observer.didWritePreferences(); });
}

ObservedNotifications::ObservedNotifications(ObservedPlatform& platform)
    : ForwardingNotificationCenter(platform.target().notificationCenter())
    , m_platform(platform)
{
}

void ObservedNotifications::post(platform::Notification notification)
{
    m_platform.tell([notification](PlatformObserver& observer) { observer.didPost(notification); });
    ForwardingNotificationCenter::post(std::move(notification));
}

void ObservedSession::dataTask(platform::URLRequest request, Completion completion)
{
    auto const number = ++m_sent;
    m_platform.tell([number, request](PlatformObserver& observer) { observer.didSend(number, request); });
    if (m_platform.isOffline())
        request.url = nowhere();
    // A platform is never destroyed once it is installed.
    auto told = [&platform = m_platform, number, completion = std::move(completion)](
                    std::expected<Answer, platform::Error> answer) mutable {
        auto const copy = answer;
        // First, so that whoever is told of the answer finds what the SDK has made of it.
        completion(std::move(answer));
        platform.tell([number, copy](PlatformObserver& observer) { observer.didReceive(number, copy); });
    };
    m_platform.target().urlSession().dataTask(std::move(request), std::move(told));
}

void ObservedQueue::async(Work work)
{
    m_platform.target().mainQueue().async(std::move(work));
    m_platform.tell([](PlatformObserver& observer) { observer.didQueueWork(); });
}

void ObservedQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    m_platform.target().mainQueue().asyncAfter(delay, std::move(work));
}

ObservedLogger::ObservedLogger(ObservedPlatform& platform, std::unique_ptr<platform::Logger> target)
    : m_platform(platform)
    , m_target(std::move(target))
{
}

// The lines of debugging tell what a page is answered with, and they are off in most systems' logs.
bool ObservedLogger::isEnabled(platform::OSLogType) const
{
    return true;
}

void ObservedLogger::log(platform::OSLogType type, std::string const& message)
{
    m_platform.tell([type, message](PlatformObserver& observer) { observer.didLog(type, message); });
    if (m_target->isEnabled(type))
        m_target->log(type, message);
}

class ObservedContentController::Handler final : public platform::WKScriptMessageHandler {
public:
    Handler(PlatformObserver& observer, platform::WKScriptMessageHandler& target)
        : m_observer(observer)
        , m_target(target)
    {
    }

    // platform::WKScriptMessageHandler
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override
    {
        // The message may remove this handler.
        auto& observer = m_observer;
        observer.willHandleMessage(message);
        m_target.didReceiveScriptMessage(message);
        observer.didHandleMessage();
    }

private:
    PlatformObserver& m_observer;
    platform::WKScriptMessageHandler& m_target;
};

ObservedContentController::ObservedContentController(
    ObservedPlatform& platform, std::shared_ptr<platform::WKUserContentController> target)
    : m_platform(platform)
    , m_target(std::move(target))
{
}

ObservedContentController::~ObservedContentController() = default;

void ObservedContentController::addScriptMessageHandler(
    platform::WKScriptMessageHandler& handler, std::string const& name)
{
    auto observed = std::make_unique<Handler>(m_platform.observer(), handler);
    m_target->addScriptMessageHandler(*observed, name);
    m_handlers[name] = std::move(observed);
}

void ObservedContentController::removeScriptMessageHandler(std::string const& name)
{
    m_target->removeScriptMessageHandler(name);
    m_handlers.erase(name);
}

void ObservedContentController::addUserScript(platform::WKUserScript script)
{
    m_target->addUserScript(std::move(script));
}

platform::ATTrackingAuthorizationStatus AnsweredTracking::trackingAuthorizationStatus() const
{
    return platform::ATTrackingAuthorizationStatus::Authorized;
}

void AnsweredTracking::requestTrackingAuthorization(
    platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion)
{
    completion(platform::ATTrackingAuthorizationStatus::Authorized);
}

std::string AnsweredTracking::advertisingIdentifier() const
{
    return ObservedPlatform::advertisingIdentifier;
}

void ShiftedClock::pass(platform::TimeInterval seconds)
{
    std::scoped_lock const lock(m_mutex);
    m_passed += seconds;
}

platform::Date ShiftedClock::now() const
{
    auto date = m_platform.target().clock().now();
    std::scoped_lock const lock(m_mutex);
    date.timeIntervalSince1970 += m_passed;
    return date;
}

}
