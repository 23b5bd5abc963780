#pragma once

#import <WebKit/WebKit.h>

#include <functional>

/// The phone's web view over a real engine. The classes are those of the double without one, which it replaces.
namespace zelvora::live {

/// Runs the engines and the main queue until `done` returns true; false after half a minute.
bool runUntil(std::function<bool()> const& done);

/// What a script in the page returns, once it has run; nil if it returns nothing or fails.
id evaluate(WKWebView* view, NSString* script);

/// The process of the page dies, and the view has heard of it.
void killProcess(WKWebView* view);

bool isLoading(WKWebView* view);

}
