#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"

#include <algorithm>

namespace zelvora::shared {

using platform::UIGestureRecognizer;

namespace {

bool allowsBoth(UIGestureRecognizer& asked, UIGestureRecognizer& other)
{
    auto const delegate = asked.delegate();
    return delegate && delegate->gestureRecognizerShouldRecognizeSimultaneouslyWith(asked, other);
}

}

bool GestureArbitration::begin(std::shared_ptr<UIGestureRecognizer> const& recognizer)
{
    if (!recognizer->shouldBegin())
        return false;
    bool const fitsOthers = std::ranges::all_of(
        m_begun, [&](auto const& other) { return allowsBoth(*recognizer, *other) || allowsBoth(*other, *recognizer); });
    if (fitsOthers)
        m_begun.push_back(recognizer);
    return fitsOthers;
}

bool watchesEdge(UIGestureRecognizer const& recognizer, platform::UIRectEdge edge)
{
    auto const* pan = dynamic_cast<platform::UIScreenEdgePanGestureRecognizer const*>(&recognizer);
    return pan && (static_cast<unsigned>(pan->edges()) & static_cast<unsigned>(edge)) != 0;
}

}
