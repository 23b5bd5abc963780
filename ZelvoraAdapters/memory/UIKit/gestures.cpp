#include "ZelvoraAdapters/memory/UIKit/gestures.h"

#include <algorithm>
#include <memory>

namespace zelvora::memory {

namespace {

using enum platform::UIGestureRecognizerState;
using platform::UIGestureRecognizer;

bool mayRecognizeTogether(UIGestureRecognizer& first, UIGestureRecognizer& second)
{
    auto const allows = [](UIGestureRecognizer& asked, UIGestureRecognizer& other) {
        auto const delegate = asked.delegate();
        return delegate && delegate->gestureRecognizerShouldRecognizeSimultaneouslyWith(asked, other);
    };
    return allows(first, second) || allows(second, first);
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
    // Copies: the gesture may take the view off the screen.
    std::vector<std::shared_ptr<UIGestureRecognizer>> begun;
    for (auto const& recognizer : view.gestureRecognizers()) {
        auto const* pan = dynamic_cast<platform::UIScreenEdgePanGestureRecognizer const*>(recognizer.get());
        bool const watchesEdge = pan && (static_cast<unsigned>(pan->edges()) & static_cast<unsigned>(edge)) != 0;
        if (!watchesEdge || !recognizer->shouldBegin())
            continue;
        if (std::ranges::all_of(begun, [&](auto const& other) { return mayRecognizeTogether(*recognizer, *other); }))
            begun.push_back(recognizer);
    }
    for (auto const state : states) {
        for (auto const& recognizer : begun)
            recognizer->recognize(state);
    }
    return begun.size();
}

}
