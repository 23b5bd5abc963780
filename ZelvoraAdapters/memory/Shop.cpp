#include "ZelvoraAdapters/memory/Shop.h"

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
        platform::fatalError("there is no page: the shop is not open");
    return views.back();
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

void Page::post(std::string const& action, platform::Dictionary const& arguments) const
{
    platform::Dictionary::Entries entries(arguments.begin(), arguments.end());
    entries.emplace_back("action", action);
    if (auto const view = m_view.lock())
        view->postMessage(handlerName, platform::Dictionary(std::move(entries)));
    else
        platform::fatalError("the page is gone: the shop was closed");
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
