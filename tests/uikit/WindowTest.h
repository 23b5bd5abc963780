#pragma once

#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>
#include <gtest/gtest.h>

#include <functional>

namespace zelvora::tests {

/// An app that is active, with a window, whose user denies tracking, and a service that knows its shop "mall".
class WindowTest : public testing::Test {
protected:
    WindowTest();

    bool runUntil(std::function<bool()> const& done);
    /// Ends what is under way, and lets go of what only the main queue and the transitions hold.
    void settle();

    /// A navigation stack of the host's in the window, with one screen.
    UINavigationController* showStack();

    /// The first view of the class right inside this one, or nil.
    static UIView* viewIn(UIView* view, Class wanted);
    static WKWebView* pageIn(UIView* view);

    UIWindow* m_window;
};

}
