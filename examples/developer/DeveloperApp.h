#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/developer/FolderWatch.h"
#include "examples/developer/Options.h"
#include "examples/developer/ShownPage.h"
#include "examples/developer/Surroundings.h"
#include "examples/developer/observing/ObservedPlatform.h"
#include "examples/developer/observing/Recorder.h"
#include "examples/developer/panel/DeveloperScreen.h"
#include "examples/developer/panel/Panel.h"
#include "examples/developer/script/ScriptedApp.h"
#include "examples/host/ShopHost.h"
#include "examples/service/Service.h"

#include <memory>
#include <optional>
#include <string>

namespace zelvora::developer {

/// The example host with an author's pages in it and the panel beside it. It may be used by hand and by a script. Main
/// thread.
class DeveloperApp final : public ScriptedApp {
public:
    /// Shows the window and starts to open the pages. The app runs until its window is closed.
    DeveloperApp(GtkApplication* application, Options const& options, std::unique_ptr<examples::Service> service);
    DeveloperApp(DeveloperApp const&) = delete;
    DeveloperApp& operator=(DeveloperApp const&) = delete;
    ~DeveloperApp() override;

    /// Waits until the first page is complete. The error says what is there instead.
    [[nodiscard]] Result waitUntilReady();

    // ScriptedApp
    [[nodiscard]] bool waitUntil(std::function<bool()> const& condition, double seconds) override;
    [[nodiscard]] bool waitUntilTrue(std::string const& expression, double seconds) override;
    [[nodiscard]] Result run(std::string const& script) override;
    [[nodiscard]] Result open(std::optional<std::string> const& page, double seconds) override;
    [[nodiscard]] Result reload(double seconds) override;
    [[nodiscard]] Result swipeBack() override;
    void upload() override;
    void killPage() override;
    void setFooterVisible(bool visible) override;
    [[nodiscard]] Switches const& switches() const override { return m_switches; }
    void setSwitches(Switches const& switches) override;
    void pass(double seconds) override;
    void show(std::string const& part) override;
    [[nodiscard]] Result takePicture(std::string const& name) override;
    [[nodiscard]] Records const& records() const override { return m_recorder.records(); }
    [[nodiscard]] std::optional<StoredValue> storedValue(std::string const& key) const override;
    [[nodiscard]] Json queuedEvents() const override;
    [[nodiscard]] bool isOpen() const override;
    [[nodiscard]] bool isFooterVisible() const override;

private:
    [[nodiscard]] Panel::Actions panelActions();
    void addActions(std::vector<std::string> const& names);
    void observeHost();
    [[nodiscard]] Result openScreen(double seconds);
    [[nodiscard]] std::string addressOf(std::string const& page) const;
    /// The engine of the page that is shown, or nullptr.
    [[nodiscard]] static WebKitWebView* engine();
    void inspect();
    void refreshSoon();
    void refresh();

    Options m_options;
    Switches m_switches;
    std::unique_ptr<examples::Service> m_service;
    Recorder m_recorder;
    // Installed, and so never destroyed.
    ObservedPlatform* m_platform = nullptr;
    std::shared_ptr<examples::ShopHost> m_host;
    std::optional<Surroundings> m_surroundings;
    std::optional<StoredValues> m_values;
    std::unique_ptr<Panel> m_panel;
    std::optional<DeveloperScreen> m_screen;
    std::unique_ptr<FolderWatch> m_watch;
    // The latest web view that was told of the switches; only compared.
    WebKitWebView* m_toldEngine = nullptr;
    gtk::GSourcePointer m_tick;
    gtk::GSourcePointer m_refresh;
    guint m_log = 0;
};

}
