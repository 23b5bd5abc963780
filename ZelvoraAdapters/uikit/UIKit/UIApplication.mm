#include "ZelvoraAdapters/uikit/UIKit/UIApplication.h"

#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"

#import <UIKit/UIKit.h>

using NativeApplication = UIApplication;

namespace zelvora::uikit {

platform::UIApplicationState UIApplication::applicationState() const
{
    return static_cast<platform::UIApplicationState>([NativeApplication sharedApplication].applicationState);
}

bool UIApplication::canOpenURL(platform::URL const& url) const
{
    NSURL* native = nativeURL(url);
    return native && [[NativeApplication sharedApplication] canOpenURL:native];
}

void UIApplication::open(platform::URL const& url)
{
    if (NSURL* native = nativeURL(url))
        [[NativeApplication sharedApplication] openURL:native options:@{ } completionHandler:nil];
}

}
