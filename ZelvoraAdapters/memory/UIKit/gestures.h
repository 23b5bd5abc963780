#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstddef>
#include <vector>

namespace zelvora::memory {

using GestureStates = std::vector<platform::UIGestureRecognizerState>;

/// The states of a gesture that is carried through.
[[nodiscard]] ZELVORA_API GestureStates completed();
/// The states of one that the system breaks off.
[[nodiscard]] ZELVORA_API GestureStates brokenOff();

/// The user makes the gesture: unless the recogniser is disabled or its delegate forbids it to begin, it goes through
/// the states. Tells whether it began.
ZELVORA_API bool perform(platform::UIGestureRecognizer& recognizer, GestureStates const& states = completed());

/// The user drags a finger in from an edge of the view: all its recognisers for that edge take part that may begin, a
/// second one only where it may recognise at the same time. Tells how many began.
ZELVORA_API std::size_t edgePan(platform::UIView& view, platform::UIRectEdge edge = platform::UIRectEdge::Left,
    GestureStates const& states = completed());

}
