#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <vector>

namespace zelvora::platform {

class UIGestureRecognizer;

/// The host's stack of screens, of which the last is shown; the adapter wraps it. Main thread. It owns the controllers
/// on it, and must itself be owned by a `std::shared_ptr`.
class ZELVORA_API UINavigationController : public UIViewController {
public:
    /// From the bottom of the stack to its top.
    [[nodiscard]] virtual std::vector<std::shared_ptr<UIViewController>> viewControllers() const = 0;
    /// Puts the controller on top: its view is loaded, then the covered screen's `viewWillDisappear` is called. The
    /// controller must not be null, on a stack or presented; otherwise this stops the process. A popped screen is on
    /// its stack until its `viewWillDisappear` has returned.
    virtual void pushViewController(std::shared_ptr<UIViewController> controller, Animated animated) = 0;
    /// Takes the top controller off, unless it is the only one. It still knows its stack in its `viewWillDisappear`.
    virtual void popViewController(Animated animated) = 0;
    /// The stack's own swipe to pop, or nullptr if it has none. The same recognizer at each call, with the delegate
    /// that it was given: an adapter keeps it as long as the native stack, whoever lets go of this wrapper or of the
    /// recognizer, because a native recognizer holds its delegate weakly. It may outlive the stack.
    [[nodiscard]] virtual std::shared_ptr<UIGestureRecognizer> interactivePopGestureRecognizer() const = 0;

protected:
    using UIViewController::UIViewController;
};

}
