#pragma once

#include <gtk/gtk.h>

#include <deque>
#include <functional>
#include <string>

namespace zelvora::examples {

/// The app's first screen. It opens the shop and shows what the SDK reports and which events are queued. Main thread.
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
    void addPageNavigation(std::string const& url);
    /// Reads and shows the event queue.
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
