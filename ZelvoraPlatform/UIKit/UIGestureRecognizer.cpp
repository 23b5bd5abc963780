#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"

namespace zelvora::platform {

bool UIGestureRecognizer::shouldBegin()
{
    if (!m_enabled)
        return false;
    auto const asked = delegate();
    return !asked || asked->gestureRecognizerShouldBegin(*this);
}

void UIGestureRecognizer::recognize(UIGestureRecognizerState state)
{
    m_state = state;
    stateDidChange();
}

void UIScreenEdgePanGestureRecognizer::stateDidChange()
{
    m_action(*this);
}

}
