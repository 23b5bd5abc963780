#pragma once

/// What adapters need not write twice.
namespace zelvora::shared {

/// How far bars and notches reach into the screen, in points.
struct SafeAreaInsets {
    /// From the upper edge.
    double top = 0;
    /// From the lower edge.
    double bottom = 0;

    bool operator==(SafeAreaInsets const&) const = default;
};

}
