#include "ZelvoraAdapters/gtk/UIKit/View.h"

#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"

namespace zelvora::gtk {

std::shared_ptr<View> View::create(GtkWidget* widget)
{
    return std::shared_ptr<View>(new View(widget));
}

View::View(GtkWidget* widget)
    : UIView(std::make_unique<UIViewPeer>(*this, platform::CGRect {}, widget, UIViewPeer::Sizing::OfContent))
{
}

}
