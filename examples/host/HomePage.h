#pragma once

#include <gtk/gtk.h>

#include <deque>
#include <functional>
#include <string>

namespace zelvora::examples {

/// The app's own first screen: opens the shop, and shows what the SDK tells the host and what waits to be uploaded.
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

    /// What has just happened, in a sentence.
    void tell(std::string const& sentence);
    void addPageNavigation(std::string const& url);
    /// Reads the event queue and shows it.
    void showEventQueue();

private:
    GtkWidget* addHeading(char const* text);
    GtkWidget* addText();

    GtkWidget* m_widget;
    GtkWidget* m_status;
    GtkWidget* m_navigations;
    GtkWidget* m_queueHeading;
    GtkWidget* m_queue;
    std::deque<std::string> m_urls;
};

}
