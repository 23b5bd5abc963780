#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"

#include <gtk/gtk.h>

#include <memory>

namespace zelvora::gtk {

/// A view that shows a widget of the toolkit's and is as large as it by nature. It holds the widget.
class WidgetView final : public platform::UIView {
public:
    [[nodiscard]] static std::shared_ptr<WidgetView> create(GtkWidget* widget);

private:
    explicit WidgetView(GtkWidget* widget);
};

}
