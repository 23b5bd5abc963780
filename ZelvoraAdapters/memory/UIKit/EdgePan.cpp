#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"

#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"

namespace zelvora::memory {

namespace {

using enum platform::UIGestureRecognizerState;
using platform::UIGestureRecognizer;

}

GestureStates completed()
{
    return { Began, Changed, Ended };
}

GestureStates brokenOff()
{
    return { Began, Changed, Cancelled };
}

bool perform(UIGestureRecognizer& recognizer, GestureStates const& states)
{
    if (!recognizer.shouldBegin())
        return false;
    for (auto const state : states)
        recognizer.recognize(state);
    return true;
}

std::size_t edgePan(platform::UIView& view, platform::UIRectEdge edge, GestureStates const& states)
{
    // A copy: a delegate may add recognizers.
    auto const recognizers = view.gestureRecognizers(); // NOLINT(performance-unnecessary-copy-initialization)
    shared::GestureArbitration arbitration;
    for (auto const& recognizer : recognizers) {
        if (shared::watchesEdge(*recognizer, edge))
            (void)arbitration.begin(recognizer);
    }
    // Kept by the arbitration: the gesture may take the view off the screen.
    for (auto const state : states) {
        for (auto const& recognizer : arbitration.begun())
            recognizer->recognize(state);
    }
    return arbitration.begun().size();
}

}
