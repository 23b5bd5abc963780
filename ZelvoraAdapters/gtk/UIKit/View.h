#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"

#include <gtk/gtk.h>

#include <memory>

namespace zelvora::gtk {

/// A view that shows a GTK widget, whose natural size is its own. It keeps the widget.
class View final : public platform::UIView {
public:
    [[nodiscard]] static std::shared_ptr<View> create(GtkWidget* widget);

private:
    explicit View(GtkWidget* widget);
};

}
