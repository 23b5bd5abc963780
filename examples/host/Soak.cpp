#include "examples/host/Soak.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/driving/ChildProcesses.h"
#include "examples/driving/engineOf.h"
#include "examples/host/findWidget.h"

#include <csignal>
#include <iostream>

namespace zelvora::examples {

namespace {

// For what no fault delays. A busy machine needs it.
constexpr double longestWait = 60;
constexpr int mostFailures = 5;
// An upload takes 500 events, and the two that a close starts would send the same and remove twice as many.
constexpr std::size_t mostQueued = 300;
constexpr char const* firstLookupFault = R"({ "target": "lookup", "status": 503, "requests": 1 })";
constexpr char const* readyPage = "document.body.dataset.state === 'ready'";

std::string eventId(std::string const& round, std::string const& name)
{
    return "round-" + round + "-" + name;
}

std::string saving(std::string const& eventId)
{
    return "window.ZelvoraSDKBridge.saveEvent({ eventId: " + Page::literal(eventId) + " })";
}

}

Soak::Soak(ShopHost& host, WatchedPlatform const& platform, Options const& options)
    : m_host(host)
    , m_platform(platform)
    , m_options(options)
    , m_service(options.servicePort, options.certificates)
{
}

bool Soak::run()
{
    std::cerr << m_options.rounds << " rounds, --seed " << m_options.seed << '\n';
    auto goesOn = prepare();
    while (goesOn && m_round < m_options.rounds) {
        ++m_round;
        goesOn = playRound(planRound(m_options.seed, m_round)) && m_failed < mostFailures;
        if (isMeasured(m_round))
            goesOn = goesOn && playPlainRound();
        if (isMeasured(m_round) || !goesOn)
            m_usage.measure(m_round);
    }
    printTally();
    step("all rounds were played", m_round == m_options.rounds);
    compareEvents();
    compareUsage();
    std::cerr << (m_failed == 0 ? "Nothing broke.\n" : "What failed: " + std::to_string(m_failed) + "\n");
    return m_failed == 0;
}

bool Soak::isMeasured(int round) const
{
    constexpr int interval = 100;
    return round == RestingUsage::earlyRounds || round % interval == 0 || round == m_options.rounds;
}

bool Soak::playPlainRound()
{
    SoakRound plain;
    plain.name = std::to_string(m_round) + "-plain";
    return playRound(plain);
}

bool Soak::step(std::string const& sentence, bool succeeded)
{
    if (!succeeded) {
        ++m_failed;
        std::cerr << "FAILED in round " << m_round << ": " << sentence << '\n';
    }
    return succeeded;
}

bool Soak::prepare()
{
    if (!step("the service takes its orders", m_service.order("/faults", firstLookupFault)))
        return false;
    m_host.initializeSDK();
    m_host.presentShop();
    if (!answerPermission())
        return false;
    auto const isRefused = [this] { return m_host.lastErrorCode() == "E001"; };
    if (!step("a launch without a shop id is refused", gtk::runMainLoopUntil(isRefused, longestWait)))
        return false;
    m_host.initializeSDK();
    m_host.presentShop();
    return step("a launch after that is carried out", appears()) && closeByHost()
        && step("the uploads end", uploadsEnd());
}

bool Soak::answerPermission()
{
    GtkWidget* allow = nullptr;
    auto const isAsked = [this, &allow] {
        auto* const dialog = findDialog(m_host.window());
        allow = dialog ? findAllowButton(dialog) : nullptr;
        return allow != nullptr;
    };
    if (!step("the user is asked about tracking", gtk::runMainLoopUntil(isAsked, longestWait)))
        return false;
    g_signal_emit_by_name(allow, "clicked");
    return true;
}

bool Soak::playRound(SoakRound const& round)
{
    if (!setFaults(round) || !open(round))
        return false;
    if (usePage(round) == Outcome::Done && closeByPage(round))
        ++m_tally.closedByPage;
    else if (closeByHost())
        ++m_tally.closedByHost;
    else
        return false;
    return step("the uploads end", uploadsEnd());
}

bool Soak::setFaults(SoakRound const& round)
{
    if (SavedEvents::queued() > mostQueued && !step("the queue is uploaded before it is too long", uploadAll()))
        return false;
    auto isSet = m_service.order("/reset", "{}");
    for (auto const* fault : { &round.lookupFault, &round.collectorFault, &round.siteFault })
        isSet = isSet && (fault->empty() || m_service.order("/faults", *fault));
    m_tally.collectorFaults += static_cast<int>(!round.collectorFault.empty());
    m_tally.siteFaults += static_cast<int>(!round.siteFault.empty());
    return step("the service takes its orders", isSet);
}

bool Soak::open(SoakRound const& round)
{
    if (round.forgetsShopId)
        ZelvoraStorage::remove("shop_id");
    if (round.initializes) {
        ++m_tally.initializations;
        m_host.initializeSDK();
    }
    m_host.presentShop();
    if (!step("the shop opens", appears()))
        return false;
    // A shop id that the SDK knows already is used although the lookup of a newer one fails.
    m_tally.failedLookups += static_cast<int>(round.initializes && m_host.lastErrorCode() == "E200");
    auto const view = ZelvoraSDK::shared().activeWebView();
    m_objects.add(round.name, view);
    m_page = std::make_unique<Page>(engineOf(*view));
    return true;
}

bool Soak::appears()
{
    return gtk::runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() != nullptr; }, longestWait);
}

Soak::Outcome Soak::usePage(SoakRound const& round)
{
    if (auto const loaded = awaitPage(round, readyPage); loaded != Outcome::Done)
        return loaded;
    // An upload that succeeds removes as many events as it has sent, and another one at the same time as many again.
    if (!step("an earlier upload ends", uploadsEnd()) || !saveEvents(round) || !storeValue(round))
        return Outcome::Failed;
    if (auto const visited = visit(round); visited != Outcome::Done)
        return visited;
    if (auto const survived = surviveDeath(round); survived != Outcome::Done)
        return survived;
    if (round.togglesFooter) {
        (void)page().evaluate("(window.ZelvoraSDKBridge.setFooterVisible(false), "
                              "window.ZelvoraSDKBridge.setFooterVisible(true), true)");
    }
    return readValue(round) ? Outcome::Done : Outcome::Failed;
}

Soak::Outcome Soak::awaitPage(SoakRound const& round, std::string const& expression)
{
    if (!round.siteMayFail) {
        auto const isTrue = page().waitFor(expression, longestWait);
        return step("the page is complete" + (isTrue ? "" : describePage()), isTrue) ? Outcome::Done : Outcome::Failed;
    }
    // A page that waits for something that will not come has stopped loading.
    constexpr gint64 silence = gint64 { 2 } * G_USEC_PER_SEC;
    constexpr double interval = 0.2;
    auto const begin = g_get_monotonic_time();
    auto lastLoading = begin;
    while (g_get_monotonic_time() - lastLoading < silence) {
        if (page().waitFor(expression, interval))
            return Outcome::Done;
        auto const view = ZelvoraSDK::shared().activeWebView();
        if (view && webkit_web_view_is_loading(engineOf(*view)))
            lastLoading = g_get_monotonic_time();
        if (g_get_monotonic_time() - begin > static_cast<gint64>(longestWait) * G_USEC_PER_SEC)
            break;
    }
    return Outcome::Prevented;
}

std::string Soak::describePage()
{
    auto const view = ZelvoraSDK::shared().activeWebView();
    if (!view)
        return ": it is gone";
    auto* const engine = engineOf(*view);
    return ": progress " + std::to_string(webkit_web_view_get_estimated_load_progress(engine))
        + (webkit_web_view_is_loading(engine) ? ", loading " : ", not loading ")
        + view->currentUrl().value_or("nothing") + ", " + page().evaluate("document.readyState").value_or("no answer");
}

bool Soak::saveEvents(SoakRound const& round)
{
    for (int number = 1; number <= round.events; ++number) {
        auto const id = eventId(round.name, std::to_string(number));
        (void)page().evaluate("(" + saving(id) + ", true)");
        if (!step(
                "an event is queued", gtk::runMainLoopUntil([&id] { return SavedEvents::isQueued(id); }, longestWait)))
            return false;
        m_events.add(id);
    }
    return true;
}

bool Soak::storeValue(SoakRound const& round)
{
    auto const value = "value of round " + round.name;
    (void)page().evaluate("(window.ZelvoraSDKBridge.setItem('soak', " + Page::literal(value) + "), true)");
    auto const isStored = [&value] { return ZelvoraStorage::getString("soak") == value; };
    return step("a value is stored", gtk::runMainLoopUntil(isStored, longestWait));
}

bool Soak::readValue(SoakRound const& round)
{
    auto const value = "value of round " + round.name;
    (void)page().evaluate("(window.onSoakItem = (value) => { window.soakItem = value; }, "
                          "window.ZelvoraSDKBridge.getItem('soak', 'onSoakItem'), true)");
    return step("the value is read back", page().waitFor("window.soakItem === " + Page::literal(value), longestWait));
}

Soak::Outcome Soak::visit(SoakRound const& round)
{
    if (round.visitedPage.empty())
        return Outcome::Done;
    ++m_tally.visits;
    auto const address = Page::literal(round.visitedPage) + " + location.search + '&id=moon-jar'";
    (void)page().evaluate("(location.href = " + address + ", true)");
    return awaitPage(round,
        std::string(readyPage) + " && location.pathname.endsWith(" + Page::literal("/" + round.visitedPage) + ")");
}

Soak::Outcome Soak::surviveDeath(SoakRound const& round)
{
    if (round.death == SoakRound::Death::None)
        return Outcome::Done;
    ++m_tally.deaths;
    (void)page().evaluate("(window.isFromBeforeDeath = true)");
    if (round.death == SoakRound::Death::Killed)
        killWebProcesses();
    else
        webkit_web_view_terminate_web_process(engineOf(*ZelvoraSDK::shared().activeWebView()));
    return awaitPage(round, std::string("!window.isFromBeforeDeath && ") + readyPage);
}

void Soak::killWebProcesses()
{
    for (auto const process : webProcesses())
        kill(process, SIGKILL);
}

bool Soak::closeByPage(SoakRound const& round)
{
    auto const id = eventId(round.name, "close");
    std::string script = saving(id) + "; ";
    if (round.asksBeforeClose) {
        ++m_tally.lateAnswers;
        script += "window.ZelvoraSDKBridge.getItem('soak', 'onSoakItem'); ";
    }
    script += "window.ZelvoraSDKBridge.close(); const end = performance.now() + "
        + std::to_string(round.busyMilliseconds) + "; while (performance.now() < end);";
    auto const before = m_host.dismissals();
    // In a task of its own, so that nobody waits for the page when it goes.
    (void)page().evaluate("(setTimeout(() => { " + script + " }), true)");
    m_page.reset();
    auto const isClosing = [this, before] { return m_host.dismissals() > before; };
    if (!step("the page closes the shop", gtk::runMainLoopUntil(isClosing, longestWait)))
        return false;
    // The page saved it before it closed.
    m_events.add(id);
    if (round.diesWhileClosing) {
        ++m_tally.deaths;
        killWebProcesses();
    }
    return isGone();
}

bool Soak::closeByHost()
{
    m_page.reset();
    auto* const leave = findNamed(GTK_WIDGET(m_host.window()), "leave");
    if (leave)
        g_signal_emit_by_name(leave, "clicked");
    return isGone();
}

bool Soak::isGone()
{
    auto const isGone = [] { return ZelvoraSDK::shared().activeWebView() == nullptr; };
    return step("the container is destroyed", gtk::runMainLoopUntil(isGone, longestWait));
}

bool Soak::uploadsEnd()
{
    return gtk::runMainLoopUntil([this] { return m_platform.requestsInProgress() == 0; }, longestWait);
}

bool Soak::uploadAll()
{
    if (!m_service.order("/reset", "{}") || !uploadsEnd())
        return false;
    while (SavedEvents::queued() > 0) {
        auto const before = SavedEvents::queued();
        ZelvoraSDK::shared().sendTrackingData();
        if (!uploadsEnd() || SavedEvents::queued() >= before)
            return false;
    }
    return true;
}

void Soak::printTally() const
{
    std::cerr << "closed by the page " << m_tally.closedByPage << " times, by the app " << m_tally.closedByHost
              << " times; an answer was due at the close " << m_tally.lateAnswers << " times; initialized again "
              << m_tally.initializations << " times, and the lookup failed in " << m_tally.failedLookups << "; "
              << m_tally.visits << " visits to other pages; " << m_tally.deaths << " deaths of web processes; "
              << m_tally.collectorFaults << " rounds with faults of the collector, " << m_tally.siteFaults
              << " of the site\n";
}

void Soak::compareUsage()
{
    auto const excess = m_usage.excess();
    for (auto const& sentence : excess)
        step(sentence, false);
    if (!excess.empty())
        std::cerr << m_usage.details();
}

void Soak::compareEvents()
{
    step("the queue is uploaded in the end", uploadAll());
    auto const [missing, repeated] = m_events.arrivals(m_service);
    for (auto const& id : missing)
        step("an event never arrived: " + id, false);
    std::cerr << m_events.size() << " events saved by pages, " << repeated << " of them arrived more than once\n";
}

}
