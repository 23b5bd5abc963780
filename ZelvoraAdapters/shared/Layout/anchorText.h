#pragma once

#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"

#include <array>
#include <cstddef>
#include <string>

namespace zelvora::shared {

/// "top", "safeArea.bottom".
[[nodiscard]] inline std::string anchorText(platform::NSLayoutAnchor const& anchor)
{
    // The order is that of NSLayoutAttribute.
    constexpr std::array<char const*, 4> names { "top", "leading", "trailing", "bottom" };
    std::string const prefix = anchor.item == platform::NSLayoutAnchor::Item::SafeArea ? "safeArea." : "";
    return prefix + names[static_cast<std::size_t>(anchor.attribute)];
}

}
