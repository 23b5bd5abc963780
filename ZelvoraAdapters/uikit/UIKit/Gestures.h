#pragma once

#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#import <UIKit/UIKit.h>

#include <memory>

namespace zelvora::uikit {

/// A native recognizer that drives the SDK's one as long as the view lives that keeps it.
[[nodiscard]] UIScreenEdgePanGestureRecognizer* makeEdgePan(
    platform::UIView& view, platform::UIScreenEdgePanGestureRecognizer& recognizer);

/// What stands for a recognizer of the system's, such as a navigation stack's swipe. The native one keeps it and its
/// delegate, which the system itself holds weakly.
[[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> recognizerOf(UIGestureRecognizer* native);

}
