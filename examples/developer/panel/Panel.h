#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/developer/panel/RowList.h"
#include "examples/developer/script/Switches.h"

#include <gtk/gtk.h>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::developer {

/// The panel beside the app's screen: switches, and what became of the page's messages. It only shows. Main thread.
class Panel final {
public:
    struct Actions {
        std::function<void()> reload;
        std::function<void()> upload;
        std::function<void()> swipeBack;
        std::function<void()> killPage;
        std::function<void()> toggleFooter;
        std::function<void()> inspect;
        std::function<void(Switches const&)> change;
    };

    /// The lists below the messages, in the order of their tabs.
    static constexpr std::array<std::string_view, 4> parts { "values", "events", "uploads", "notices" };

    struct Contents {
        std::string address;
        std::vector<PanelRow> messages;
        /// In the order of the parts.
        std::array<std::vector<PanelRow>, 4> lists;
    };

    Panel(Actions actions, Switches const& switches);
    Panel(Panel const&) = delete;
    Panel& operator=(Panel const&) = delete;
    ~Panel() = default;

    [[nodiscard]] GtkWidget* widget() const { return m_widget.get(); }

    void show(Contents const& contents);
    /// Brings a list to the front.
    void showPart(std::string const& part);
    /// Shows where the switches are; in another language all is said anew.
    void setSwitches(Switches const& switches);

    /// The style sheet of the panel's widgets, for the whole display.
    static void installStyle();

private:
    void build();
    void addButtons();
    void addSwitches();
    void addLists();
    void addButton(std::string const& label, std::function<void()> const& work);
    void addSwitch(std::string_view name, std::string const& label, std::vector<std::string_view> const& places,
        std::vector<std::string> const& labels, std::size_t selected);
    void addControl(GtkWidget* control);
    [[nodiscard]] std::string say(char const* korean, char const* english) const;

    Actions m_actions;
    Switches m_switches;
    gtk::GObjectPointer<GtkWidget> m_widget;
    // Owned by the widget.
    GtkWidget* m_address = nullptr;
    GtkWidget* m_controls = nullptr;
    GtkWidget* m_stack = nullptr;
    std::unique_ptr<RowList> m_messages;
    std::array<std::unique_ptr<RowList>, 4> m_lists;
};

}
