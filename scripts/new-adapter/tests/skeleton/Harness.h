#pragma once

#include "ZelvoraAdapters/skeleton/Platform.h"
#include "ZelvoraAdapters/skeleton/UIKit/NavigationController.h"
#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraAdapters/skeleton/os/Logger.h"
#include "tests/contract/LoggerContract.h"
#include "tests/contract/URLSessionContract.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What the contract suites need of an adapter: the service itself, and whoever is on its other side. The head of each
// suite tells what its harness does.
namespace zelvora::tests {

using skeleton::missing;

class SkeletonLog final {
public:
    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<skeleton::Logger>(subsystem, category);
    }
    std::vector<LogEntry> entries() { missing("SkeletonLog::entries"); }
    void setDebugEnabled(bool) { missing("SkeletonLog::setDebugEnabled"); }
    std::string kept(std::string const& message) { return message; }
};

class SkeletonApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& /*identifier*/)
    {
        return std::make_unique<skeleton::Bundle>();
    }
};

class SkeletonStore final {
public:
    platform::UserDefaults& store() { return m_store; }
    void restart() { missing("SkeletonStore::restart"); }

private:
    skeleton::UserDefaults m_store;
};

class SkeletonTime final {
public:
    platform::Clock& clock() { return m_clock; }
    void setSystemClock(platform::Date) { missing("SkeletonTime::setSystemClock"); }

private:
    skeleton::Clock m_clock;
};

class SkeletonMainQueue final {
public:
    platform::DispatchQueue& queue() { return *m_queue; }
    void destroyQueue() { m_queue.reset(); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonMainQueue::runUntil"); }
    platform::TimeInterval elapsed() { missing("SkeletonMainQueue::elapsed"); }

private:
    std::optional<skeleton::DispatchQueue> m_queue { "MainQueue" };
};

class SkeletonGlobalQueue final {
public:
    platform::DispatchQueue& queue() { return *m_queue; }
    void destroyQueue() { m_queue.reset(); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonGlobalQueue::runUntil"); }
    platform::TimeInterval elapsed() { missing("SkeletonGlobalQueue::elapsed"); }

private:
    std::optional<skeleton::DispatchQueue> m_queue { "GlobalQueue" };
};

class SkeletonNotificationCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_queue; }
    void runQueue() { missing("SkeletonNotificationCenter::runQueue"); }

private:
    skeleton::NotificationCenter m_center;
    skeleton::DispatchQueue m_queue { "MainQueue" };
};

class SkeletonJSON final {
public:
    platform::JSONSerialization& json() { return m_json; }

private:
    skeleton::JSONSerialization m_json;
};

class SkeletonNetwork final {
public:
    platform::URLSession& session() { return *m_session; }
    void destroySession() { m_session.reset(); }
    platform::URL answering(int, std::string) { missing("SkeletonNetwork::answering"); }
    platform::URL failing(LoaderFailure) { missing("SkeletonNetwork::failing"); }
    std::vector<ReceivedRequest> received() { missing("SkeletonNetwork::received"); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonNetwork::runUntil"); }
    void changed() { }

private:
    std::optional<skeleton::URLSession> m_session { std::in_place };
};

class SkeletonUser final {
public:
    platform::ATTrackingManager& manager() { return m_manager; }
    void setStatus(platform::ATTrackingAuthorizationStatus) { missing("SkeletonUser::setStatus"); }
    bool isAsking() { missing("SkeletonUser::isAsking"); }
    void answer(bool) { missing("SkeletonUser::answer"); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonUser::runUntil"); }
    void restart() { missing("SkeletonUser::restart"); }

private:
    skeleton::ATTrackingManager m_manager;
};

/// Views, screens, gestures, pages and the application.
class SkeletonScreen final {
public:
    SkeletonScreen() { platform::Platform::install(std::make_unique<skeleton::Platform>()); }

    bool runUntil(std::function<bool()> const&) { missing("SkeletonScreen::runUntil"); }

    // Screens
    platform::CGRect screenBounds() { missing("SkeletonScreen::screenBounds"); }
    double safeTop() { missing("SkeletonScreen::safeTop"); }
    double safeBottom() { missing("SkeletonScreen::safeBottom"); }
    void show(std::shared_ptr<platform::UIViewController>) { missing("SkeletonScreen::show, a controller"); }
    std::shared_ptr<platform::UINavigationController> makeNavigationController(
        std::shared_ptr<platform::UIViewController> root)
    {
        auto stack = std::make_shared<skeleton::NavigationController>();
        stack->pushViewController(std::move(root), platform::Animated::No);
        return stack;
    }

    // Views
    std::shared_ptr<platform::UIView> makeContentView(double) { missing("SkeletonScreen::makeContentView"); }
    platform::CGRect seenFrame(platform::UIView&) { missing("SkeletonScreen::seenFrame"); }
    bool isSeen(platform::UIView&) { missing("SkeletonScreen::isSeen"); }
    std::vector<platform::UIView const*> backToFront(platform::UIView&) { missing("SkeletonScreen::backToFront"); }

    // Fingers
    void dragFromLeftEdge(platform::UIView&) { missing("SkeletonScreen::dragFromLeftEdge"); }

    // Pages
    void show(std::shared_ptr<platform::WKWebView>) { missing("SkeletonScreen::show, a page"); }
    platform::URL page(std::string const&) { missing("SkeletonScreen::page"); }
    bool waitForPage(platform::WKWebView&) { missing("SkeletonScreen::waitForPage"); }
    void navigate(platform::WKWebView&, platform::URL const&) { missing("SkeletonScreen::navigate"); }
    void navigateFrame(platform::WKWebView&, platform::URL const&) { missing("SkeletonScreen::navigateFrame"); }
    void post(platform::WKWebView&, std::string const&, std::string const&, platform::Value const&)
    {
        missing("SkeletonScreen::post");
    }
    std::vector<std::string> marks() { missing("SkeletonScreen::marks"); }

    // Applications
    void activate() { missing("SkeletonScreen::activate"); }
    void deactivate() { missing("SkeletonScreen::deactivate"); }
    std::vector<std::string> openedURLs() { missing("SkeletonScreen::openedURLs"); }
};

}
