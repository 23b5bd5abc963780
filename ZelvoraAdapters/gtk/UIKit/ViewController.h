#pragma once

#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtk/gtk.h>

namespace zelvora::gtk {

/// One of the host's own screens: a widget of the host's as a view controller.
class ViewController final : public platform::UIViewController {
public:
    explicit ViewController(GtkWidget* widget);

private:
    class Peer;
};

}
