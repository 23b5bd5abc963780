#pragma once

#import "module/ObjectiveC/ZelvoraIOS.h"
#include "tests/uikit/WindowTest.h"

#import <UIKit/UIKit.h>

#include <string>
#include <vector>

/// A host's delegate that remembers what it was asked.
@interface RecordingDelegate : NSObject <ZelvoraSDKDelegate>
@property (nonatomic) BOOL mayGoBack;
@property (nonatomic, readonly) int askedCount;
@property (nonatomic, readonly) int dismissalCount;
@property (nonatomic, weak, readonly) ZelvoraWebView* askedWith;
@end

namespace zelvora::tests {

/// The arguments of a call of `initialize` by name. Those that are not set are nil.
struct Configuration {
    BOOL allowsSwipeBack = YES;
    ZelvoraViewProvider headerViewProvider = nil;
    ZelvoraViewProvider footerViewProvider = nil;
    id<ZelvoraSDKDelegate> delegate = nil;
    ZelvoraCompletionHandler completionHandler = nil;
};

/// The module in an app that is active, whose user denies tracking, with a service that knows its shop "mall".
class SurfaceTest : public WindowTest {
protected:
    SurfaceTest();
    ~SurfaceTest() override;

    NSError* initialize(Configuration const& configuration = {});
    /// Initializes, and waits until that is over.
    void makeReady(Configuration const& configuration = {});
    /// Waits until an initialization that is under way is over.
    void waitUntilReady();

    /// Starts from the stack's screen, and waits for the container on top of it.
    ZelvoraIOSViewController* openShop(UINavigationController* stack);

    static ZelvoraWebView* webViewIn(UIView* view);
    /// The error lines of the system log since the last call, without their prefix.
    static std::vector<std::string> errorLines();

    ZelvoraSDK* m_sdk;

private:
    bool m_isInitializing = false;
};

/// The system's text as ours; "nil" for none, so that it can be printed.
[[nodiscard]] std::string textOf(NSString* text);

}
