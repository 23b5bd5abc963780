#pragma once

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "examples/driving/Page.h"
#include "examples/service/Service.h"
#include "tests/support/TemporaryDirectory.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

/// The SDK on the real platform, with the local service and a phone-sized window on an X display. If it cannot be set
/// up, the process exits with a message.
class LiveShop final {
public:
    /// Starts its own service. `status` is the user's earlier answer to the question about tracking.
    explicit LiveShop(platform::ATTrackingAuthorizationStatus status = platform::ATTrackingAuthorizationStatus::Denied);
    /// A later launch of an app, with its data and a service that is already running.
    LiveShop(std::filesystem::path const& data, std::filesystem::path const& certificates, std::uint16_t port);
    LiveShop(LiveShop const&) = delete;
    LiveShop& operator=(LiveShop const&) = delete;
    ~LiveShop();

    /// Initializes the SDK, which holds the delegate weakly, and records errors and URLs.
    void initialize(std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> const& delegate = nullptr);
    /// Presents the container over the window, with a header and a footer, and waits for its first page.
    [[nodiscard]] bool open();
    /// Navigates to another page of the shop and waits until it is ready.
    [[nodiscard]] bool openPage(std::string const& name);

    [[nodiscard]] examples::Service& service() { return *m_service; }
    [[nodiscard]] examples::Page& page() { return *m_page; }
    [[nodiscard]] std::shared_ptr<platform::UIViewController> presenter() const { return m_presenter; }
    [[nodiscard]] GtkWindow* window() { return m_window; }
    [[nodiscard]] std::filesystem::path data() const { return m_data; }
    [[nodiscard]] std::filesystem::path certificates() const { return m_certificates; }
    [[nodiscard]] std::uint16_t port() const { return m_port; }

    /// How many uploads the collector has accepted.
    [[nodiscard]] std::size_t collectedBatches();
    /// The errors that the completion handler was called with, in order.
    [[nodiscard]] std::vector<ZelvoraSDKError> errors();
    [[nodiscard]] std::vector<std::string> const& urls() const { return m_urls; }
    [[nodiscard]] WebKitWebView* engine() { return m_engine; }

    /// Waits until the page's log contains the text; false if it does not within the usual time.
    [[nodiscard]] bool logHas(std::string const& text);

private:
    void install();

    struct Errors;

    TemporaryDirectory m_directory;
    std::unique_ptr<examples::Service> m_service;
    std::filesystem::path m_data;
    std::filesystem::path m_certificates;
    std::uint16_t m_port = 0;
    GtkWindow* m_window = nullptr;
    WebKitWebView* m_engine = nullptr;
    std::shared_ptr<platform::UIViewController> m_presenter;
    std::unique_ptr<examples::Page> m_page;
    std::shared_ptr<Errors> m_errors;
    std::vector<std::string> m_urls;
};

}
