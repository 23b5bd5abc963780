#import "module/ObjectiveC/ZelvoraWebView.h"

#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"
#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include <memory>

namespace uikit = zelvora::uikit;
namespace platform = zelvora::platform;

namespace {

platform::CGRect rectangle(CGRect frame)
{
    return { .x = frame.origin.x, .y = frame.origin.y, .width = frame.size.width, .height = frame.size.height };
}

// nullptr once the SDK has let go of its view while the host still holds this one: then every call does nothing.
std::shared_ptr<zelvora::ZelvoraWebView> ownerOf(ZelvoraWebView* view)
{
    return std::dynamic_pointer_cast<zelvora::ZelvoraWebView>(uikit::ownerOf(view));
}

}

@interface ZelvoraWebView () <ZLVView>
- (instancetype)initForOwnerWithFrame:(CGRect)frame NS_DESIGNATED_INITIALIZER;
@end

@implementation ZelvoraWebView

+ (void)initialize
{
    uikit::install();
}

- (instancetype)initWithFrame:(CGRect)frame urlString:(NSString*)urlString allowsSwipeBack:(BOOL)allowsSwipeBack
{
    self = [super initWithFrame:frame];
    if (!self)
        return nil;
    uikit::adoptNext(self);
    auto const owner =
        std::make_shared<zelvora::ZelvoraWebView>(rectangle(frame), uikit::textOf(urlString), allowsSwipeBack);
    uikit::nativeOf(*owner);
    return self;
}

- (instancetype)initForOwnerWithFrame:(CGRect)frame
{
    return [super initWithFrame:frame];
}

// The two that are not supported: the SDK's own stop the process with a message.

- (instancetype)initWithFrame:(CGRect)frame
{
    zelvora::ZelvoraWebView const refusing(rectangle(frame));
    return nil;
}

- (instancetype)initWithCoder:(NSCoder*)coder
{
    zelvora::ZelvoraWebView const refusing { platform::NSCoder() };
    return nil;
}

- (NSString*)currentUrl
{
    auto const owner = ownerOf(self);
    auto const url = owner ? owner->currentUrl() : std::nullopt;
    return url ? uikit::stringOf(*url) : nil;
}

- (BOOL)canGoBack
{
    auto const owner = ownerOf(self);
    return owner && owner->canGoBack();
}

- (void)goBack
{
    if (auto const owner = ownerOf(self))
        owner->goBack();
}

- (UIViewController*)parentViewController
{
    auto const owner = ownerOf(self);
    auto const controller = owner ? owner->parentViewController() : nullptr;
    return controller ? uikit::nativeOf(*controller) : nil;
}

- (void)setParentViewController:(UIViewController*)parentViewController
{
    if (auto const owner = ownerOf(self))
        owner->setParentViewController(uikit::wrap(parentViewController));
}

// WKNavigationDelegate

- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler
{
    if (!decisionHandler)
        return;
    auto const owner = ownerOf(self);
    if (!owner) {
        decisionHandler(WKNavigationActionPolicyCancel);
        return;
    }
    platform::WKNavigationAction const action { .url = uikit::urlOf(navigationAction.request.URL) };
    owner->decidePolicyFor(action, [decisionHandler](platform::WKNavigationActionPolicy policy) {
        decisionHandler(policy == platform::WKNavigationActionPolicy::Allow ? WKNavigationActionPolicyAllow
                                                                            : WKNavigationActionPolicyCancel);
    });
}

- (void)webView:(WKWebView*)webView didStartProvisionalNavigation:(WKNavigation*)navigation
{
    if (auto const owner = ownerOf(self))
        owner->didStartProvisionalNavigation();
}

// WKScriptMessageHandler

- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message
{
    auto const owner = ownerOf(self);
    if (!owner)
        return;
    owner->didReceiveScriptMessage(
        { .name = uikit::textOf(message.name), .body = uikit::valueOf(message.body).value_or(platform::Null()) });
}

@end
