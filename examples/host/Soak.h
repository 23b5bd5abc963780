#pragma once

#include "examples/driving/Page.h"
#include "examples/host/LiveObjects.h"
#include "examples/host/Options.h"
#include "examples/host/RemoteService.h"
#include "examples/host/RestingUsage.h"
#include "examples/host/SavedEvents.h"
#include "examples/host/ShopHost.h"
#include "examples/host/SoakPlan.h"
#include "examples/host/WatchedPlatform.h"

#include <cstdint>
#include <memory>
#include <string>

namespace zelvora::examples {

/// Opens the shop again and again, lets its pages use and close it, and makes the service fail and web processes die
/// meanwhile. Reports on standard error what the app uses after some of the rounds. It fails if the app uses more at
/// the end than after the tenth round, if an event that a page saved has not reached the collector, or if something
/// that should happen does not and no fault explains it. Main thread.
class Soak final {
public:
    /// The host runs on this platform.
    Soak(ShopHost& host, WatchedPlatform const& platform, Options const& options);

    /// Returns whether all of it succeeded. Runs the main loop; call it from the running application.
    [[nodiscard]] bool run();

private:
    /// How often something happened.
    struct Tally {
        int closedByPage = 0;
        int closedByHost = 0;
        int initializations = 0;
        int failedLookups = 0;
        int deaths = 0;
        int visits = 0;
        int lateAnswers = 0;
        int collectorFaults = 0;
        int siteFaults = 0;
    };
    enum class Outcome : std::uint8_t { Done, Prevented, Failed };

    /// The first use after the install, whose first lookup fails.
    [[nodiscard]] bool prepare();
    [[nodiscard]] bool answerPermission();
    /// False if it makes no sense to go on.
    [[nodiscard]] bool playRound(SoakRound const& round);
    [[nodiscard]] bool isMeasured(int round) const;
    /// Nothing goes wrong in it. Who measures needs it: the engine keeps the web process of the last page for the next
    /// one, unless that process died.
    [[nodiscard]] bool playPlainRound();
    [[nodiscard]] bool setFaults(SoakRound const& round);
    [[nodiscard]] bool open(SoakRound const& round);
    [[nodiscard]] static bool appears();
    [[nodiscard]] Outcome usePage(SoakRound const& round);
    [[nodiscard]] bool saveEvents(SoakRound const& round);
    [[nodiscard]] bool storeValue(SoakRound const& round);
    [[nodiscard]] bool readValue(SoakRound const& round);
    [[nodiscard]] Outcome visit(SoakRound const& round);
    [[nodiscard]] Outcome surviveDeath(SoakRound const& round);
    [[nodiscard]] bool closeByPage(SoakRound const& round);
    [[nodiscard]] bool closeByHost();
    [[nodiscard]] bool isGone();
    void killWebProcesses();

    /// Waits until the expression is true in the page. If the site may fail in this round, that may prevent it.
    [[nodiscard]] Outcome awaitPage(SoakRound const& round, std::string const& expression);
    /// What the page that did not become complete looks like from outside.
    [[nodiscard]] std::string describePage();
    /// Waits until no request of the SDK is on its way.
    [[nodiscard]] bool uploadsEnd();
    /// Uploads until the queue is empty, while nothing fails.
    [[nodiscard]] bool uploadAll();

    void compareUsage();
    void compareEvents();
    void printTally() const;

    /// Returns the result. A step that failed is printed and fails the soak.
    bool step(std::string const& sentence, bool succeeded);
    [[nodiscard]] Page& page() { return *m_page; }

    ShopHost& m_host;
    WatchedPlatform const& m_platform;
    Options const& m_options;
    RemoteService m_service;
    LiveObjects m_objects;
    RestingUsage m_usage { m_objects };
    std::unique_ptr<Page> m_page;
    Tally m_tally;
    SavedEvents m_events;
    int m_round = 0;
    int m_failed = 0;
};

}
