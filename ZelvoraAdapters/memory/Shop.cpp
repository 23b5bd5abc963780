#include "ZelvoraAdapters/memory/Shop.h"

#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraAdapters/memory/WebKit/internal/PageScript.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

namespace {

constexpr char const* handlerName = "zelvora";
// Comes before each answer, in a call of its own.
constexpr char const* beforeAnswer = "javascript:alert(";

std::shared_ptr<WebView> newestOf(Platform const& platform)
{
    auto const views = platform.webViews();
    if (views.empty())
        platform::fatalError("there is no page: the shop is not open, or its queues have yet to run (runUntilIdle)");
    return views.back();
}

PageScript scriptOf(WebView const& view, Platform& platform)
{
    std::string source;
    for (auto const& script : view.userContentController().userScripts())
        source += script.source;
    return { source, platform.jsonSerialization() };
}

}

Platform& readyShop(Options options)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    if (options.trackingStatus == Status::NotDetermined)
        options.trackingStatus = Status::Denied;
    auto& platform = install(std::move(options));
    platform.urlSession().setServer([](platform::URLRequest const&) {
        return platform::URLSession::Answer { { R"({"data": {"shopId": "shop"}})" }, { 200 } };
    });
    return platform;
}

Page::Page(Platform& platform) : m_platform(platform), m_view(newestOf(platform)) { }

void Page::close() const
{
    post("close");
}

void Page::setItem(std::string const& key, platform::Value const& value, std::optional<double> expireSec) const
{
    platform::Dictionary::Entries arguments { { "key", key }, { "value", value } };
    if (expireSec)
        arguments.emplace_back("expire", *expireSec);
    post("setItem", platform::Dictionary(std::move(arguments)));
}

void Page::getItem(std::string const& key, std::string const& callbackName) const
{
    post("getItem", { { "key", key }, { "callback", callbackName } });
}

void Page::removeItem(std::string const& key) const
{
    post("removeItem", { { "key", key } });
}

void Page::saveEvent(platform::Dictionary const& data) const
{
    post("saveEvent", { { "data", data } });
}

void Page::getEvents(std::string const& callbackName) const
{
    post("getEvents", { { "callback", callbackName } });
}

void Page::setFooterVisible(bool visible) const
{
    post("setFooterVisible", { { "visible", visible } });
}

void Page::invoke(std::string const& name, std::string const& data) const
{
    auto const posted = data.empty() ? platform::Value(platform::Null {}) : platform::Value(data);
    post("invokeCustomAction", { { "name", name }, { "data", posted } });
}

void Page::post(std::string const& action, platform::Dictionary const& arguments) const
{
    auto const view = m_view.lock();
    if (!view)
        platform::fatalError("the page is gone: the shop was closed");
    if (auto const objection = scriptOf(*view, m_platform).objection(action, arguments))
        m_platform.complain("A page cannot post this: " + *objection);
    platform::Dictionary::Entries entries(arguments.begin(), arguments.end());
    entries.emplace_back("action", action);
    view->postMessage(handlerName, platform::Dictionary(std::move(entries)));
    m_platform.runUntilIdle();
}

std::vector<std::string> Page::answers() const
{
    std::vector<std::string> answers;
    auto const view = m_view.lock();
    if (!view)
        return answers;
    for (auto const& script : view->evaluated()) {
        if (!script.starts_with(beforeAnswer))
            answers.push_back(script);
    }
    return answers;
}

std::optional<std::string> Page::url() const
{
    auto const view = m_view.lock();
    auto const url = view ? view->url() : std::nullopt;
    return url ? std::optional(url->absoluteString()) : std::nullopt;
}

}
