#pragma once

#include "examples/host/describe.h"

#include <gtk/gtk.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace zelvora::examples {

/// The app's first screen. It opens the shop and, for developers, shows what the SDK tells and which events are queued.
/// Main thread.
class HomePage final {
public:
    struct Actions {
        std::function<void()> present;
        std::function<void()> push;
        std::function<void()> upload;
    };

    explicit HomePage(Actions const& actions);

    [[nodiscard]] GtkWidget* widget() const { return m_widget; }

    /// Shows what has just happened, as a sentence.
    void tell(std::string const& sentence);
    void tellOpeningTime(int milliseconds);
    void addPageNavigation(std::string const& url);
    /// Reads and shows the event queue.
    void showEventQueue();
    /// As its switch does.
    void showDeveloperPart(bool shown);

private:
    /// A part of the developers' side whose rows change.
    struct List {
        GtkWidget* group;
        std::vector<GtkWidget*> rows;
    };

    void addHero(std::function<void()> const& present);
    void addActions(Actions const& actions);
    void addDeveloperPart();
    List addDeveloperList(char const* title);
    static void fill(List& list, std::vector<Description> const& lines);

    GtkWidget* m_widget;
    GtkWidget* m_column;
    GtkWidget* m_upload = nullptr;
    GtkWidget* m_switch = nullptr;
    GtkWidget* m_developerPart = nullptr;
    GtkWidget* m_told = nullptr;
    GtkWidget* m_openingTime = nullptr;
    List m_pages {};
    List m_queue {};
    std::deque<std::string> m_urls;
};

}
