#pragma once

#include "examples/driving/Page.h"
#include "examples/host/Options.h"
#include "examples/host/RemoteService.h"
#include "examples/host/ShopHost.h"

#include <functional>
#include <memory>
#include <string>

namespace zelvora::examples {

/// Uses the app and the shop as a person would, reports each step on standard error and saves pictures.
class Tour {
public:
    Tour(ShopHost& host, Options options);
    virtual ~Tour() = default;
    Tour(Tour const&) = delete;
    Tour& operator=(Tour const&) = delete;

    /// Returns whether every step succeeded. Runs the main loop; call it from the running application.
    [[nodiscard]] bool run();

protected:
    /// The seconds that a step may take.
    static constexpr double patience = 20;

    virtual void makeSteps() = 0;

    /// Prints the sentence with the result and returns the result. A failed step fails the tour.
    bool step(std::string const& sentence, bool succeeded);
    /// The same for a condition that becomes true within the usual time.
    bool stepUntil(std::string const& sentence, std::function<bool()> const& condition);
    /// Saves a picture of the window, by default the app's.
    void picture(std::string const& name, GtkWindow* window = nullptr);

    /// Waits for the question about tracking and allows it.
    void answerPermission();
    /// Until both identifiers are known.
    void waitForIdentifiers();
    /// Waits for the container that the app was told to open.
    void expectShop();
    /// Goes to another page of the shop.
    void openPage(std::string const& name);
    void lookAtCollector();
    void leaveShop();

    [[nodiscard]] ShopHost& host() { return m_host; }
    [[nodiscard]] Options const& options() const { return m_options; }
    [[nodiscard]] RemoteService& service() { return m_service; }
    [[nodiscard]] bool hasPage() const { return m_page != nullptr; }
    [[nodiscard]] Page& page() { return *m_page; }
    /// A page outlives its container unless it is let go.
    void forgetPage() { m_page.reset(); }

private:
    ShopHost& m_host;
    Options m_options;
    RemoteService m_service;
    std::unique_ptr<Page> m_page;
    int m_failed = 0;
    int m_pictures = 0;
};

}
