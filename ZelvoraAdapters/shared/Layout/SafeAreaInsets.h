#pragma once

namespace zelvora::shared {

/// How far bars and notches reach into the screen, in points.
struct SafeAreaInsets {
    double top = 0;
    double bottom = 0;

    bool operator==(SafeAreaInsets const&) const = default;
};

}
