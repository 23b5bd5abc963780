#import "module/ObjectiveC/ZelvoraJavascriptInterface.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"

namespace uikit = zelvora::uikit;
namespace platform = zelvora::platform;
using Bridge = zelvora::ZelvoraJavascriptInterface;

@implementation ZelvoraJavascriptInterface

+ (void)initialize
{
    uikit::install();
}

+ (NSString*)handlerName
{
    return uikit::stringOf(Bridge::handlerName);
}

+ (NSString*)scriptSource
{
    return uikit::stringOf(Bridge::scriptSource());
}

+ (void)handleMessage:(WKScriptMessage*)message
              webView:(WKWebView*)webView
       viewController:(UIViewController*)viewController
{
    platform::WKScriptMessage const received { .name = uikit::textOf(message.name),
        .body = uikit::valueOf(message.body).value_or(platform::Null()) };
    Bridge::handle(received, uikit::wrap(webView), uikit::retain(viewController));
}

@end
