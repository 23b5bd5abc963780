#pragma once

#include "examples/driving/Page.h"
#include "examples/host/Options.h"
#include "examples/host/RemoteService.h"
#include "examples/host/ShopHost.h"

#include <functional>
#include <memory>
#include <string>

namespace zelvora::examples {

/// Uses the app and the shop as a person would, step by step, reports each step on standard error and saves pictures.
/// In the first walk the collector fails at the end, so that events are left for the second walk, which continues after
/// a restart.
class Walk final {
public:
    Walk(ShopHost& host, Options options);

    /// Returns whether every step succeeded. Runs the main loop; call it from the running application.
    [[nodiscard]] bool run();

private:
    void walkFirst();
    void walkSecond();

    void answerPermission();
    void openShop();
    void buySomething();
    void useBridge();
    void useFrame();
    void followLinks();
    void closeShop();
    void readBackAfterRestart();
    void lookAtCollector();
    void uploadWhatWasLeft();

    /// Prints the sentence with the result and returns the result. A failed step fails the walk.
    bool step(std::string const& sentence, bool succeeded);
    /// Saves a picture of the window, by default the app's.
    void picture(std::string const& name, GtkWindow* window = nullptr);
    void printQueue(std::string const& when);
    bool clickAndExpect(std::string const& id, std::string const& answer);
    void openPage(std::string const& name);
    [[nodiscard]] Page& page() { return *m_page; }

    ShopHost& m_host;
    Options m_options;
    RemoteService m_service;
    std::unique_ptr<Page> m_page;
    int m_failed = 0;
    int m_pictures = 0;
};

}
