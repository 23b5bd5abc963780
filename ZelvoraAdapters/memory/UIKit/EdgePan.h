#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstddef>
#include <vector>

namespace zelvora::memory {

/// What a recognizer goes through during one gesture, in order.
using GestureStates = std::vector<platform::UIGestureRecognizerState>;

/// The states of a completed gesture.
[[nodiscard]] ZELVORA_API GestureStates completed();
/// The states of a gesture that the system cancels.
[[nodiscard]] ZELVORA_API GestureStates brokenOff();

/// Makes the gesture, as the user does: unless the recognizer is disabled or its delegate forbids it to begin, it goes
/// through the states. Returns whether it began.
ZELVORA_API bool perform(platform::UIGestureRecognizer& recognizer, GestureStates const& states = completed());

/// Drags a finger in from an edge of the view, as the user does. `shared::GestureArbitration` decides which recognizers
/// for that edge begin, of the view and of those around it, the innermost first. Returns how many do. A navigation
/// stack's own swipe takes no part: see `perform`.
ZELVORA_API std::size_t edgePan(platform::UIView& view, platform::UIRectEdge edge = platform::UIRectEdge::Left,
    GestureStates const& states = completed());

}
