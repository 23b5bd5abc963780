#import "module/ObjectiveC/ZelvoraSDK.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraIOSVersion.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#import "module/ObjectiveC/ZelvoraIOSViewController.h"
#include "module/ObjectiveC/internal/BridgedError.h"
#include "module/ObjectiveC/internal/HostCallbacks.h"
#include "module/ObjectiveC/internal/HostObjects.h"

#include <memory>
#include <optional>
#include <string>

namespace uikit = zelvora::uikit;
using zelvora::module::bridged;
using zelvora::module::callable;
using zelvora::module::callableAction;
using zelvora::module::HostDelegate;
using zelvora::module::HostObjects;

namespace {

zelvora::module::GuardedHostObjects& hostObjects()
{
    return zelvora::module::GuardedHostObjects::shared();
}

zelvora::ZelvoraSDK& sdk()
{
    return zelvora::ZelvoraSDK::shared();
}

void setDelegate(std::shared_ptr<HostDelegate> const& delegate)
{
    hostObjects().replace(&HostObjects::delegate, delegate, [&delegate] { sdk().setDelegate(delegate); });
}

ZelvoraWebView* nativeOf(std::shared_ptr<zelvora::ZelvoraWebView> const& view)
{
    return view ? static_cast<ZelvoraWebView*>(uikit::nativeOf(*view)) : nil;
}

}

@interface ZelvoraSDK ()
- (instancetype)initOnlyInstance NS_DESIGNATED_INITIALIZER;
@end

@implementation ZelvoraSDK

+ (void)initialize
{
    uikit::install();
    // The adapter makes both by their names, which a linker does not see: in a static library they would be missing.
    (void)[ZelvoraIOSViewController class];
    (void)[ZelvoraWebView class];
}

+ (ZelvoraSDK*)sharedInstance
{
    static ZelvoraSDK* const s_shared = [[ZelvoraSDK alloc] initOnlyInstance];
    return s_shared;
}

+ (NSString*)versionString
{
    return uikit::stringOf(ZelvoraIOSVersionString);
}

- (instancetype)initOnlyInstance
{
    return [super init];
}

- (NSError*)initializeWithUserKey:(NSString*)userKey
                           apiKey:(NSString*)apiKey
                isTrackingEnabled:(BOOL)isTrackingEnabled
                            isDev:(BOOL)isDev
                  allowsSwipeBack:(BOOL)allowsSwipeBack
               headerViewProvider:(ZelvoraViewProvider)headerViewProvider
               footerViewProvider:(ZelvoraViewProvider)footerViewProvider
                         delegate:(id<ZelvoraSDKDelegate>)delegate
               completion_handler:(ZelvoraCompletionHandler)completion_handler
{
    auto const stand = HostDelegate::referringTo(delegate);
    auto const result =
        sdk().initialize(uikit::textOf(userKey), uikit::textOf(apiKey), isTrackingEnabled, isDev, allowsSwipeBack,
            callable(headerViewProvider), callable(footerViewProvider), stand, callable(completion_handler));
    // What was refused changes nothing here either.
    if (!result)
        return bridged(result.error());
    self.headerViewProvider = headerViewProvider;
    self.footerViewProvider = footerViewProvider;
    setDelegate(stand);
    return nil;
}

- (NSError*)startFromViewController:(UIViewController*)viewController
{
    auto const result = sdk().start(uikit::retain(viewController));
    return result ? nil : bridged(result.error());
}

- (ZelvoraWebView*)createWebView
{
    return nativeOf(sdk().createWebView());
}

- (NSString*)getCurrentUrl
{
    auto const url = sdk().getCurrentUrl();
    return url ? uikit::stringOf(*url) : nil;
}

- (void)setFooterVisible:(BOOL)visible
{
    sdk().setFooterVisible(visible);
}

- (void)sendTrackingData
{
    sdk().sendTrackingData();
}

- (void)addCustomActionWithFunctionName:(NSString*)functionName action:(ZelvoraCustomAction)action
{
    if (!action)
        return;
    auto const name = uikit::textOf(functionName);
    hostObjects().replaceAction(name, action, [&name, action] { sdk().addCustomAction(name, callableAction(action)); });
}

- (NSDictionary<NSString*, ZelvoraCustomAction>*)getCustomActions
{
    auto* const actions = [NSMutableDictionary<NSString*, ZelvoraCustomAction> dictionaryWithCapacity:0];
    for (auto const& [name, action] : hostObjects().get(&HostObjects::customActions))
        actions[uikit::stringOf(name)] = action;
    return actions;
}

- (ZelvoraViewProvider)headerViewProvider
{
    return hostObjects().get(&HostObjects::headerViewProvider);
}

- (void)setHeaderViewProvider:(ZelvoraViewProvider)provider
{
    ZelvoraViewProvider const block = [provider copy];
    hostObjects().replace(
        &HostObjects::headerViewProvider, block, [block] { sdk().setHeaderViewProvider(callable(block)); });
}

- (ZelvoraViewProvider)footerViewProvider
{
    return hostObjects().get(&HostObjects::footerViewProvider);
}

- (void)setFooterViewProvider:(ZelvoraViewProvider)provider
{
    ZelvoraViewProvider const block = [provider copy];
    hostObjects().replace(
        &HostObjects::footerViewProvider, block, [block] { sdk().setFooterViewProvider(callable(block)); });
}

- (BOOL)allowsSwipeBack
{
    return sdk().allowsSwipeBack();
}

- (void)setAllowsSwipeBack:(BOOL)allowsSwipeBack
{
    sdk().setAllowsSwipeBack(allowsSwipeBack);
}

- (id<ZelvoraSDKDelegate>)delegate
{
    auto const delegate = hostObjects().get(&HostObjects::delegate);
    return delegate ? delegate->delegate() : nil;
}

- (void)setDelegate:(id<ZelvoraSDKDelegate>)delegate
{
    setDelegate(HostDelegate::referringTo(delegate));
}

- (id<ZelvoraSDKDelegate>)delegateHolder
{
    auto const delegate = hostObjects().get(&HostObjects::delegate);
    return delegate ? delegate->kept() : nil;
}

- (void)setDelegateHolder:(id<ZelvoraSDKDelegate>)delegate
{
    setDelegate(HostDelegate::keeping(delegate));
}

- (ZelvoraPageNavigationHandler)onPageNavigation
{
    return hostObjects().get(&HostObjects::onPageNavigation);
}

- (void)setOnPageNavigation:(ZelvoraPageNavigationHandler)handler
{
    ZelvoraPageNavigationHandler const block = [handler copy];
    hostObjects().replace(
        &HostObjects::onPageNavigation, block, [block] { sdk().setOnPageNavigation(callable(block)); });
}

- (BOOL)isFooterVisible
{
    return sdk().isFooterVisible();
}

- (ZelvoraWebView*)activeWebView
{
    return nativeOf(sdk().activeWebView());
}

- (void)setActiveWebView:(ZelvoraWebView*)webView
{
    sdk().setActiveWebView(std::dynamic_pointer_cast<zelvora::ZelvoraWebView>(uikit::ownerOf(webView)));
}

@end
