#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"

namespace zelvora::platform {

/// The part of a view that the system's bars and notches leave free. A plain value: the view must outlive its use.
class ZELVORA_API UILayoutGuide final {
public:
    /// As `UIView::safeAreaLayoutGuide` makes it.
    explicit UILayoutGuide(UIView& owner) : m_owner(&owner) { }

    /// An edge of the part that is free, to make constraints with.
    /// @{
    [[nodiscard]] NSLayoutAnchor topAnchor() const { return anchor(NSLayoutAttribute::Top); }
    [[nodiscard]] NSLayoutAnchor bottomAnchor() const { return anchor(NSLayoutAttribute::Bottom); }
    /// @}

private:
    [[nodiscard]] NSLayoutAnchor anchor(NSLayoutAttribute attribute) const
    {
        return { m_owner, NSLayoutAnchor::Item::SafeArea, attribute };
    }

    UIView* m_owner;
};

}
