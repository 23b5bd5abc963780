#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "tests/uikit/WindowTest.h"
#include "tests/uikit/life/Surface.h"

#import <UIKit/UIKit.h>

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// A host's delegate that may veto a back swipe.
class HostDelegate final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    bool zelvoraSDKShouldHandleBackAction(zelvora::ZelvoraWebView&) override
    {
        ++asked;
        return mayGoBack;
    }
    void zelvoraSDKWillDismiss() override { ++dismissals; }

    bool mayGoBack = true;
    int asked = 0;
    int dismissals = 0;
};

/// The SDK on the phone's adapter, in an app that is active, with a service that knows its shop "mall".
class PhoneTest : public WindowTest {
protected:
    PhoneTest();
    ~PhoneTest() override;

    /// Starts the initialization.
    void initialize();
    /// Initializes, and waits until that is over.
    void makeReady();

    /// A screen of the host's alone in the window.
    UIViewController* showScreen();

    static ::ZelvoraWebView* webViewIn(UIView* view);
    /// The URLs of the requests to the service.
    static std::vector<std::string> requests();

    ZelvoraSDK& m_sdk;
    std::shared_ptr<HostDelegate> m_delegate = std::make_shared<HostDelegate>();
    std::vector<std::string> m_errors;
    // A footer is provided if this is set.
    UIView* m_footer = nil;
};

}
