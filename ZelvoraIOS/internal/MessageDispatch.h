#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <memory>
#include <string>

namespace zelvora::internal {

/// Carries out the action of a page's message. A message that lacks a required argument, or has one of another type, is
/// ignored; an unknown action is logged. Main thread.
void dispatchMessage(std::string const& action, platform::Dictionary const& message,
    std::shared_ptr<platform::WKWebView> const& webView,
    std::shared_ptr<platform::UIViewController> const& viewController);

}
