#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"

#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"

#include <memory>
#include <vector>

namespace zelvora::memory {

namespace {

using enum platform::UIGestureRecognizerState;
using platform::UIGestureRecognizer;
using Recognizers = std::vector<std::shared_ptr<UIGestureRecognizer>>;

// Of the view and those around it, the innermost first.
Recognizers candidates(platform::UIView& view, platform::UIRectEdge edge)
{
    Recognizers candidates;
    for (auto* asked = &view; asked; asked = asked->superview()) {
        for (auto const& recognizer : asked->gestureRecognizers()) {
            if (shared::watchesEdge(*recognizer, edge))
                candidates.push_back(recognizer);
        }
    }
    return candidates;
}

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
    shared::GestureArbitration arbitration;
    for (auto const& recognizer : candidates(view, edge))
        (void)arbitration.begin(recognizer);
    // Kept by the arbitration: the gesture may take the view off the screen.
    for (auto const state : states) {
        for (auto const& recognizer : arbitration.begun())
            recognizer->recognize(state);
    }
    return arbitration.begun().size();
}

}
