#include "ZelvoraAdapters/uikit/Host.h"

#include "ZelvoraAdapters/uikit/Platform.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/uikit/UIKit/View.h"
#include "ZelvoraAdapters/uikit/UIKit/ViewController.h"
#include "ZelvoraAdapters/uikit/WebKit/WebView.h"

#import <dispatch/dispatch.h>

#include <memory>
#include <mutex>
#include <utility>

namespace zelvora::uikit {

namespace {

void letGo(void* native)
{
    (void)(__bridge_transfer UIViewController*)native;
}

/// Keeps a native controller, which must end on the main thread.
class RetainedController final {
public:
    RetainedController(UIViewController* native, std::shared_ptr<platform::UIViewController> controller)
        : m_native(native)
        , m_controller(std::move(controller))
    {
    }
    RetainedController(RetainedController const&) = delete;
    RetainedController& operator=(RetainedController const&) = delete;
    ~RetainedController()
    {
        if (![NSThread isMainThread])
            dispatch_async_f(dispatch_get_main_queue(), (__bridge_retained void*)m_native, letGo);
    }

private:
    UIViewController* m_native;
    std::shared_ptr<platform::UIViewController> m_controller;
};

}

void install()
{
    static std::once_flag s_once;
    std::call_once(s_once, [] { platform::Platform::install(std::make_unique<Platform>()); });
}

std::shared_ptr<platform::UIView> wrap(UIView* native)
{
    return native ? View::of(native) : nullptr;
}

std::shared_ptr<platform::WKWebView> wrap(WKWebView* native)
{
    return native ? WebView::of(native) : nullptr;
}

std::shared_ptr<platform::UIViewController> wrap(UIViewController* native)
{
    return native ? ViewController::of(native) : nullptr;
}

std::shared_ptr<platform::UIViewController> retain(UIViewController* native)
{
    auto controller = wrap(native);
    if (!controller)
        return nullptr;
    auto* const pointer = controller.get();
    auto const kept = std::make_shared<RetainedController>(native, std::move(controller));
    return { kept, pointer };
}

std::shared_ptr<platform::UIView> ownerOf(UIView* native)
{
    return Bond<platform::UIView, UIView>::ownerOf(native);
}

std::shared_ptr<platform::UIViewController> ownerOf(UIViewController* native)
{
    return Bond<platform::UIViewController, UIViewController>::ownerOf(native);
}

void adoptNext(UIView* native)
{
    UIViewPeer::adoptNext(native);
}

void adoptNext(UIViewController* native)
{
    UIViewControllerPeer::adoptNext(native);
}

UIView* nativeOf(platform::UIView& view)
{
    auto& peer = UIViewPeer::of(view);
    // The system's own web view ends its observations while its native view is still there, so it keeps that one.
    return dynamic_cast<platform::WKWebView*>(&view) ? peer.native() : peer.handOver();
}

UIViewController* nativeOf(platform::UIViewController& controller)
{
    return UIViewControllerPeer::of(controller).handOver();
}

void viewDidLoad(UIViewController* native)
{
    UIViewControllerPeer::viewDidLoad(native);
}

void viewWillDisappear(UIViewController* native, bool animated)
{
    UIViewControllerPeer::viewWillDisappear(native, animated ? platform::Animated::Yes : platform::Animated::No);
}

}
