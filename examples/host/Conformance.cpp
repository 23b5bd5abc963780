#include "examples/host/Conformance.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "examples/driving/engineOf.h"
#include "examples/host/bars.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <utility>

namespace zelvora::examples {

namespace {

using gtk::runMainLoopUntil;
using platform::Array;
using platform::Dictionary;
using platform::Value;

constexpr double patienceForStep = 20;
// All cases of one opening, on a machine that does other things too.
constexpr double patienceForCases = 120;
constexpr char const* controlName = "control";

Value valueOf(nlohmann::json const& container)
{
    auto const text = container.dump();
    platform::Data const data { { text.begin(), text.end() } };
    return platform::Platform::current().jsonSerialization().jsonObject(data).value_or(platform::Null {});
}

bool isShown()
{
    return ZelvoraSDK::shared().activeWebView() != nullptr;
}

}

Conformance::Conformance(ShopHost& host, MovablePlatform& platform, Options const& options)
    : m_host(host)
    , m_platform(platform)
    , m_options(options)
    , m_service(options.servicePort, options.certificates)
{
}

bool Conformance::run()
{
    if (!initialize())
        return false;
    if (!open() || !runCases("bare") || !close())
        return false;
    registerActions();
    return open() && runCases("actions") && save();
}

bool Conformance::initialize()
{
    auto const footer = [](platform::UIViewController&) { return gtk::wrapWidget(makeFooter()); };
    auto const tell = [](std::optional<ZelvoraSDKError> const& error) {
        if (error)
            std::cerr << error->code() << ": " << error->errorDescription().value_or("") << '\n';
    };
    ZelvoraSDK::shared().initialize("user", "demo-key", true, false, true, nullptr, footer, nullptr, tell);
    auto const hasShopId = [] { return ZelvoraStorage::getValidShopId().has_value(); };
    return runMainLoopUntil(hasShopId, patienceForStep);
}

void Conformance::obey(std::optional<std::string> const& data)
{
    auto const order = nlohmann::json::parse(data.value_or(""), nullptr, false);
    if (!order.is_object())
        return;
    ZelvoraStorage::set(Array { order.value("id", ""), answerTo(order) }, controlName);
}

Value Conformance::answerTo(nlohmann::json const& order)
{
    auto const name = order.value("order", "");
    if (name == "passTime")
        m_platform.passTime(order.value("seconds", 0.0));
    else if (name == "isFooterVisible")
        return ZelvoraSDK::shared().isFooterVisible();
    else if (name == "received")
        return std::exchange(m_received, {});
    else if (name == "upload")
        ZelvoraSDK::shared().sendTrackingData();
    else if (name == "collected")
        return collected();
    else
        return "unknown order";
    return true;
}

Value Conformance::collected()
{
    return valueOf(m_service.collectedEvents());
}

void Conformance::registerActions()
{
    auto const note = [this](std::string const& name) {
        return [this, name](std::optional<std::string> const& data) {
            m_received = m_received.appending(
                data ? Dictionary { { "name", name }, { "data", *data } } : Dictionary { { "name", name } });
        };
    };
    // A name for each rule: an ordinary one, a built-in function's, none, and those that the script has to escape.
    for (auto const* name : { "share", "close", "", "장바구니", "a\"b\\c" })
        ZelvoraSDK::shared().addCustomAction(name, note(name));
}

bool Conformance::open()
{
    m_host.presentShop();
    if (!runMainLoopUntil(&isShown, patienceForStep))
        return false;
    m_page = std::make_unique<Page>(engineOf(*ZelvoraSDK::shared().activeWebView()));
    return m_page->waitFor("window.conformance");
}

bool Conformance::runCases(std::string const& world)
{
    ZelvoraSDK::shared().addCustomAction(controlName, [this](std::optional<std::string> const& data) { obey(data); });
    auto const arguments = Page::literal(world) + ", " + Page::literal(m_service.address("frames"));
    (void)m_page->evaluate("(conformance.run(" + arguments + "), true)");
    auto const isComplete = m_page->waitFor("conformance.outcomes", patienceForCases);
    m_report[world] = nlohmann::json::parse(m_page->evaluate("conformance.outcomes").value_or("null"), nullptr, false);
    if (!isComplete)
        std::cerr << "The page's cases did not end: " << m_page->evaluate("conformance.current").value_or("") << '\n';
    return isComplete;
}

bool Conformance::close()
{
    (void)m_page->evaluate("(conformance.close(), true)");
    auto const isClosed = runMainLoopUntil([] { return !isShown(); }, patienceForStep);
    auto const isEmpty = [] { return ZelvoraStorage::getEventTrackingData().isEmpty(); };
    auto const isUploaded = runMainLoopUntil(isEmpty, patienceForStep);
    auto const events = m_service.collectedEvents();
    m_report["close"] = { { "closed", isClosed }, { "uploaded", events.empty() ? nlohmann::json() : events.back() } };
    m_page.reset();
    return isClosed && isUploaded;
}

bool Conformance::save() const
{
    std::ofstream file(m_options.report);
    file << m_report.dump(2) << '\n';
    return file.good();
}

}
