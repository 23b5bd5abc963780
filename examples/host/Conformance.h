#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "examples/driving/Page.h"
#include "examples/host/MovablePlatform.h"
#include "examples/host/Options.h"
#include "examples/host/RemoteService.h"
#include "examples/host/ShopHost.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace zelvora::examples {

/// Shows the app's side of the page authors' conformance suite: opens its page, which calls the bridge and notes the
/// answers, first in an app without custom actions and then in one that has some. What was noted is saved as one JSON
/// file; whoever has the answers of another side compares them. Main thread.
class Conformance final {
public:
    /// The host runs on this platform and is not initialized yet. Its site is the suite's.
    Conformance(ShopHost& host, MovablePlatform& platform, Options const& options);

    /// Returns whether the page ran to its end each time. Runs the main loop; call it from the running application.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] bool initialize();
    /// The page asks the app for what it cannot do itself through one more action, which is registered too late to
    /// become a function of the page.
    void obey(std::optional<std::string> const& data);
    [[nodiscard]] platform::Value answerTo(nlohmann::json const& order);
    [[nodiscard]] platform::Value collected();
    void registerActions();

    [[nodiscard]] bool open();
    [[nodiscard]] bool runCases(std::string const& world);
    [[nodiscard]] bool close();
    [[nodiscard]] bool save() const;

    ShopHost& m_host;
    MovablePlatform& m_platform;
    Options const& m_options;
    RemoteService m_service;
    std::unique_ptr<Page> m_page;
    /// What the app's actions were called with since the page last asked.
    platform::Array m_received;
    nlohmann::json m_report;
};

}
