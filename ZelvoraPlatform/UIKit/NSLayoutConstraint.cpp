#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"

#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/fatalError.h"

#include <algorithm>

namespace zelvora::platform {

namespace {

UIView* commonAncestor(UIView& first, UIView const& second)
{
    auto* ancestor = &first;
    while (ancestor && !ancestor->contains(second))
        ancestor = ancestor->superview();
    return ancestor;
}

}

NSLayoutConstraint NSLayoutAnchor::constraintEqualTo(NSLayoutAnchor other) const
{
    return { *this, other };
}

void NSLayoutConstraint::setActive(bool active) const
{
    auto* keeper = commonAncestor(*m_first.view, *m_second.view);
    if (!keeper) {
        // An inactive constraint may name views that have been separated since.
        if (active)
            fatalError("a constraint was activated between views that have no common ancestor");
        return;
    }
    if (active)
        keeper->activate(*this);
    else
        keeper->deactivate(*this);
}

void NSLayoutConstraint::activate(std::initializer_list<NSLayoutConstraint> constraints)
{
    for (auto const& constraint : constraints)
        constraint.setActive(true);
}

}
