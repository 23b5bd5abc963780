#pragma once

namespace zelvora::gtk {

/// How far the system's bars reach into the screen, in points.
struct SafeAreaInsets {
    double top = 0;
    double bottom = 0;

    bool operator==(SafeAreaInsets const&) const = default;
};

}
