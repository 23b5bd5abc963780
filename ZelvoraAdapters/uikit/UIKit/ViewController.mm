#include "ZelvoraAdapters/uikit/UIKit/ViewController.h"

#include "ZelvoraAdapters/uikit/UIKit/NavigationController.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewControllerPeer.h"

namespace zelvora::uikit {

namespace {

std::shared_ptr<platform::UIViewController> make(::UIViewController* native)
{
    if ([native isKindOfClass:[::UINavigationController class]])
        return std::make_shared<NavigationController>(static_cast<::UINavigationController*>(native));
    return std::make_shared<ViewController>(native);
}

}

std::shared_ptr<platform::UIViewController> ViewController::of(::UIViewController* native)
{
    // Else two threads could each make one.
    auto const lock = lockBonds();
    if (auto owner = Bond<platform::UIViewController, ::UIViewController>::ownerOf(native))
        return owner;
    auto made = make(native);
    UIViewControllerPeer::of(*made).handOver();
    return made;
}

ViewController::ViewController(::UIViewController* native)
    : platform::UIViewController(std::make_unique<UIViewControllerPeer>(*this, native))
{
}

}
