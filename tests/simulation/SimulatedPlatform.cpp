#include "tests/simulation/SimulatedPlatform.h"

#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <memory>
#include <set>
#include <string_view>
#include <utility>

namespace zelvora::simulation {

namespace {

using platform::OSLogType;

char const* nameOf(OSLogType type)
{
    switch (type) {
    case OSLogType::Default:
        return "default";
    case OSLogType::Info:
        return "info";
    case OSLogType::Debug:
        return "debug";
    case OSLogType::Error:
        return "error";
    case OSLogType::Fault:
        return "fault";
    }
    return "";
}

class EffectsLogger final : public platform::Logger {
public:
    explicit EffectsLogger(Effects& effects) : m_effects(effects) { }

    // platform::Logger
    [[nodiscard]] bool isEnabled(OSLogType) const override { return true; }
    void log(OSLogType type, std::string const& message) override
    {
        m_effects.add(std::string("log ") + nameOf(type) + " " + message);
    }

private:
    Effects& m_effects;
};

char const* nameOf(memory::Transition::Kind kind)
{
    using Kind = memory::Transition::Kind;
    switch (kind) {
    case Kind::Push:
        return "push";
    case Kind::Pop:
        return "pop";
    case Kind::Present:
        return "present";
    case Kind::Dismiss:
        return "dismiss";
    }
    return "";
}

// The names of the page's functions for custom actions, sorted.
std::string functionsIn(platform::WKWebViewConfiguration const& configuration)
{
    auto const& scripts =
        static_cast<memory::UserContentController const&>(*configuration.userContentController).userScripts();
    constexpr std::string_view before = "var customKeys = ";
    auto const begin = scripts.size() == 1 ? scripts.front().source.find(before) : std::string::npos;
    if (begin == std::string::npos)
        return ": no script";
    auto const first = begin + before.size();
    auto const& source = scripts.front().source;
    auto const read =
        shared::JSONSerialization().jsonObject({ source.substr(first, source.find(";\n", first) - first) });
    auto const* array = read ? read->array() : nullptr;
    if (!array)
        return ": no names";
    std::set<std::string> names;
    for (auto const& name : *array)
        names.insert("\"" + *name.text() + "\"");
    std::string text;
    for (auto const& name : names)
        text += " " + name;
    return text;
}

memory::Options withAddresses(memory::Options options)
{
    options.serviceAddresses = addresses();
    return options;
}

}

platform::ServiceAddresses const& addresses()
{
    static platform::ServiceAddresses const s_addresses {
        .productionWebHost = "shop.zelvora.example",
        .developmentWebHost = "shop-dev.zelvora.example",
        .productionApiBase = "https://api.zelvora.example",
        .developmentApiBase = "https://api-dev.zelvora.example",
        .lookupEndpoint = "https://lookup.zelvora.example/",
        .trackingEndpoint = "https://collector.zelvora.example/v1/events",
    };
    return s_addresses;
}

std::string describe(platform::URLRequest const& request)
{
    auto line = "request " + request.httpMethod + " " + request.url.absoluteString();
    for (auto const& [name, value] : request.httpHeaderFields)
        line.append(" ").append(name).append("=").append(value);
    return line + " within " + std::to_string(static_cast<int>(request.timeoutInterval))
        + " s: " + request.httpBody.bytes;
}

void NumberedQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    auto const number = ++m_last;
    m_effects.submitted({ m_name, delay, number });
    m_target.asyncAfter(delay, [&willRun = m_willRun, name = m_name, number, held = std::move(work)]() mutable {
        willRun(name, number);
        held();
    });
}

void WatchedUserDefaults::interruptAfter(std::size_t writes, std::function<void()> interruption)
{
    m_writesLeft = writes;
    m_interruption = std::move(interruption);
}

void WatchedUserDefaults::setObject(std::optional<platform::Value> value, std::string const& key)
{
    willWrite((value ? "write " : "delete ") + key);
    ForwardingUserDefaults::setObject(std::move(value), key);
    if (didWrite)
        didWrite(key);
}

void WatchedUserDefaults::setDouble(double number, std::string const& key)
{
    willWrite("write " + key);
    ForwardingUserDefaults::setDouble(number, key);
    if (didWrite)
        didWrite(key);
}

void WatchedUserDefaults::removeObject(std::string const& key)
{
    willWrite("delete " + key);
    ForwardingUserDefaults::removeObject(key);
    if (didWrite)
        didWrite(key);
}

void WatchedUserDefaults::willWrite(std::string line)
{
    if (m_interruption && m_writesLeft-- == 0)
        m_interruption();
    m_effects.add(std::move(line));
}

void WatchedURLSession::dataTask(platform::URLRequest request, Completion completion)
{
    m_effects.add(describe(request));
    m_requests.push_back(request);
    m_target.dataTask(std::move(request), std::move(completion));
}

SimulatedPlatform::SimulatedPlatform(memory::Options options, platform::UserDefaults* preferences)
    : ForwardingPlatform(std::make_unique<memory::Platform>(withAddresses(std::move(options))))
    , memory(static_cast<memory::Platform&>(target()))
    , m_preferences(preferences ? *preferences : memory.standardUserDefaults())
    , m_userDefaults(m_preferences, effects)
    , m_urlSession(memory.urlSession(), effects)
    , m_mainQueue(memory.mainQueue(), Queue::Main, effects, m_lastBlock, willRunBlock)
    , m_globalQueue(memory.globalQueue(), Queue::Global, effects, m_lastBlock, willRunBlock)
    , m_trackingManager(memory.trackingManager(), effects)
    , m_application(memory.application(), effects)
{
    effects.setSource([this] { collect(); });
}

std::unique_ptr<platform::Logger> SimulatedPlatform::makeLogger(std::string const&, std::string const&)
{
    return std::make_unique<EffectsLogger>(effects);
}

std::shared_ptr<platform::WKWebView> SimulatedPlatform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    effects.add("web view with functions" + functionsIn(configuration));
    auto made = ForwardingPlatform::makeWebView(frame, std::move(configuration));
    // Before the SDK observes the URL, so that its handler is called right after this one.
    auto const number = std::to_string(m_webViews.size());
    m_observations.push_back(made->observeURL([this, number](platform::WKWebView const& page) {
        auto const url = page.url();
        effects.add(url ? "url in " + number + ": " + url->absoluteString() : "no url in " + number);
    }));
    m_webViews.push_back(std::static_pointer_cast<memory::WebView>(made));
    m_seen.emplace_back();
    return made;
}

void SimulatedPlatform::collect()
{
    auto const& transitions = memory.screen().transitions();
    for (; m_seenTransitions < transitions.size(); ++m_seenTransitions) {
        auto const& transition = transitions[m_seenTransitions];
        std::string line = nameOf(transition.kind);
        if (transition.animated == platform::Animated::No)
            line += " at once";
        effects.append(std::move(line));
    }
    for (std::size_t number = 0; number < m_webViews.size(); ++number) {
        if (auto const page = m_webViews[number].lock())
            collectPage(number, *page);
    }
}

void SimulatedPlatform::collectPage(std::size_t number, memory::WebView const& page)
{
    auto& seen = m_seen[number];
    for (; seen.decided < page.decisions().size(); ++seen.decided) {
        auto const& [action, policy] = page.decisions()[seen.decided];
        effects.append((policy == platform::WKNavigationActionPolicy::Allow ? "allow " : "cancel ")
            + (action.url ? action.url->absoluteString() : "nothing"));
    }
    for (; seen.evaluated < page.evaluated().size(); ++seen.evaluated)
        effects.append("evaluate in " + std::to_string(number) + ": " + page.evaluated()[seen.evaluated]);
}

}
