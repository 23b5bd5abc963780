#pragma once

#include "examples/developer/panel/Panel.h"
#include "examples/developer/script/Switches.h"

#include <gtk/gtk.h>

namespace zelvora::developer {

/// Puts the app's screen and the panel beside one another into the app's window. Main thread.
class DeveloperScreen final {
public:
    /// What the window has shown until now becomes the app's screen. The panel must outlive the window's content.
    DeveloperScreen(GtkWindow* window, Panel const& panel);

    /// Gives the app's screen this size, and the window what it needs.
    void setSize(ScreenSize size);

private:
    // Owns the others.
    GtkWindow* m_window;
    GtkWidget* m_screen;
    GtkWidget* m_scroller;
};

}
