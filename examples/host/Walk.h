#pragma once

#include "examples/driving/Page.h"
#include "examples/host/Options.h"
#include "examples/host/ShopHost.h"
#include "examples/service/ServiceClient.h"

#include <functional>
#include <memory>
#include <string>

namespace zelvora::examples {

/// Uses the app and the shop as a person would, step by step, tells on standard error what happened, and saves
/// pictures. The first walk ends with the collector out of order, so that events are left for the second, which begins
/// where the first stopped.
class Walk final {
public:
    Walk(ShopHost& host, Options options);

    /// Whether every step went as it should. Turns the main loop; call it from the running application.
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

    /// Prints the sentence with its outcome; a step that failed fails the walk.
    bool step(std::string const& sentence, bool succeeded);
    /// Of the app's window where none is named.
    void picture(std::string const& name, GtkWindow* window = nullptr);
    void printQueue(std::string const& when);
    bool clickAndExpect(std::string const& id, std::string const& answer);
    void openPage(std::string const& name);
    /// Tells the service what goes wrong from now on, or that nothing does.
    void instruct(std::string const& path, std::string const& order);
    [[nodiscard]] std::size_t collectedEvents();
    [[nodiscard]] std::string address(std::string const& host) const;
    [[nodiscard]] Page& page() { return *m_page; }

    ShopHost& m_host;
    Options m_options;
    ServiceClient m_client;
    std::unique_ptr<Page> m_page;
    int m_failed = 0;
    int m_pictures = 0;
};

}
