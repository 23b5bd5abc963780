#include "ZelvoraAdapters/uikit/UIKit/UIViewControllerPeer.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraAdapters/uikit/UIKit/View.h"
#include "ZelvoraAdapters/uikit/UIKit/ViewController.h"

#include <utility>

/// The native side of a controller whose class names no other.
@interface ZLVPlainViewController : UIViewController
@end

@implementation ZLVPlainViewController

- (void)viewDidLoad
{
    [super viewDidLoad];
    zelvora::uikit::viewDidLoad(self);
}

- (void)viewWillDisappear:(BOOL)animated
{
    [super viewWillDisappear:animated];
    zelvora::uikit::viewWillDisappear(self, animated);
}

@end

namespace zelvora::uikit {

namespace {

using ControllerBond = Bond<platform::UIViewController, UIViewController>;

// Reset when it is taken.
UIViewController* s_adopted = nil;

}

UIViewControllerPeer::UIViewControllerPeer(platform::UIViewController& owner, UIViewController* native)
    : m_bond(owner, native)
{
}

UIViewController* UIViewControllerPeer::makeNative(std::optional<std::string_view> nativeClass)
{
    Class const named = nativeClass ? NSClassFromString(stringOf(*nativeClass)) : Nil;
    if (!named)
        return [[ZLVPlainViewController alloc] initWithNibName:nil bundle:nil];
    if ([s_adopted isKindOfClass:named])
        return std::exchange(s_adopted, nil);
    id const made = [static_cast<id<ZLVViewController>>([named alloc]) initForOwner];
    return made;
}

void UIViewControllerPeer::adoptNext(UIViewController* native)
{
    s_adopted = native;
}

void UIViewControllerPeer::viewDidLoad(UIViewController* native)
{
    auto const owner = ControllerBond::ownerOf(native);
    if (owner && !of(*owner).m_isLoadingView)
        (void)owner->view();
}

void UIViewControllerPeer::viewWillDisappear(UIViewController* native, platform::Animated animated)
{
    if (auto const owner = ControllerBond::ownerOf(native))
        owner->viewWillDisappear(animated);
}

std::shared_ptr<platform::UIView> UIViewControllerPeer::loadView()
{
    m_isLoadingView = true;
    UIView* view = native().view;
    m_isLoadingView = false;
    return View::of(view ? view : [[UIView alloc] initWithFrame:CGRectMake(0, 0, 0, 0)]);
}

std::shared_ptr<platform::UINavigationController> UIViewControllerPeer::navigationController() const
{
    UINavigationController* stack = native().navigationController;
    return stack ? std::dynamic_pointer_cast<platform::UINavigationController>(ViewController::of(stack)) : nullptr;
}

void UIViewControllerPeer::setModalPresentationStyle(platform::UIModalPresentationStyle style)
{
    native().modalPresentationStyle = static_cast<UIModalPresentationStyle>(style);
}

void UIViewControllerPeer::present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated)
{
    if (UIViewController* shown = of(*presented).handOver()) {
        [native() presentViewController:shown animated:animated == platform::Animated::Yes completion:nil];
    }
}

void UIViewControllerPeer::dismiss(platform::Animated animated)
{
    [native() dismissViewControllerAnimated:animated == platform::Animated::Yes completion:nil];
}

}
