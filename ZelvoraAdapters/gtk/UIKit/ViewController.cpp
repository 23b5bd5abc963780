#include "ZelvoraAdapters/gtk/UIKit/ViewController.h"

#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/View.h"

#include <memory>
#include <utility>

namespace zelvora::gtk {

class ViewController::Peer final : public UIViewControllerPeer {
public:
    Peer(UIViewController& owner, GtkWidget* widget) : UIViewControllerPeer(owner), m_view(View::create(widget)) { }

private:
    // UIViewControllerPeer
    [[nodiscard]] std::shared_ptr<platform::UIView> makeView() override { return std::exchange(m_view, nullptr); }

    // Kept until the controller takes it.
    std::shared_ptr<platform::UIView> m_view;
};

ViewController::ViewController(GtkWidget* widget) : UIViewController(std::make_unique<Peer>(*this, widget)) { }

}
