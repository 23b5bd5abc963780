#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <vector>

namespace zelvora::platform {

class UIGestureRecognizer;

/// A stack of screens, the last one shown; the host's own, wrapped by the adapter. Main thread. It keeps the
/// controllers on it.
class ZELVORA_API UINavigationController : public UIViewController {
public:
    [[nodiscard]] virtual std::vector<std::shared_ptr<UIViewController>> viewControllers() const = 0;
    virtual void pushViewController(std::shared_ptr<UIViewController> controller, Animated animated) = 0;
    /// Takes the top controller off, unless it is the only one.
    virtual void popViewController(Animated animated) = 0;
    /// The stack's own swipe to pop, or nullptr where it has none.
    [[nodiscard]] virtual std::shared_ptr<UIGestureRecognizer> interactivePopGestureRecognizer() const = 0;

protected:
    using UIViewController::UIViewController;
};

}
