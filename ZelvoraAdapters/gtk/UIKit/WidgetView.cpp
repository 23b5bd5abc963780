#include "ZelvoraAdapters/gtk/UIKit/WidgetView.h"

#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"

namespace zelvora::gtk {

std::shared_ptr<WidgetView> WidgetView::create(GtkWidget* widget)
{
    return std::shared_ptr<WidgetView>(new WidgetView(widget));
}

WidgetView::WidgetView(GtkWidget* widget)
    : UIView(std::make_unique<UIViewPeer>(*this, platform::CGRect {}, widget, UIViewPeer::Sizing::OfContent))
{
}

}
