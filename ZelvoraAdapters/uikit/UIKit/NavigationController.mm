#include "ZelvoraAdapters/uikit/UIKit/NavigationController.h"

#include "ZelvoraAdapters/uikit/UIKit/Gestures.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/uikit/UIKit/ViewController.h"

namespace zelvora::uikit {

NavigationController::NavigationController(::UINavigationController* native)
    : platform::UINavigationController(std::make_unique<UIViewControllerPeer>(*this, native))
{
}

std::vector<std::shared_ptr<platform::UIViewController>> NavigationController::viewControllers() const
{
    std::vector<std::shared_ptr<platform::UIViewController>> controllers;
    for (::UIViewController* controller in native().viewControllers)
        controllers.push_back(ViewController::of(controller));
    return controllers;
}

void NavigationController::pushViewController(
    std::shared_ptr<platform::UIViewController> controller, platform::Animated animated)
{
    if (::UIViewController* pushed = UIViewControllerPeer::of(*controller).handOver())
        [native() pushViewController:pushed animated:animated == platform::Animated::Yes];
}

void NavigationController::popViewController(platform::Animated animated)
{
    [native() popViewControllerAnimated:animated == platform::Animated::Yes];
}

std::shared_ptr<platform::UIGestureRecognizer> NavigationController::interactivePopGestureRecognizer() const
{
    return recognizerOf(native().interactivePopGestureRecognizer);
}

::UINavigationController* NavigationController::native() const
{
    return static_cast<::UINavigationController*>(UIViewControllerPeer::of(*this).native());
}

}
