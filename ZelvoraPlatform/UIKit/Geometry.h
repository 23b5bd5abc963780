#pragma once

namespace zelvora::platform {

/// A rectangle in points, its origin at the top left of the containing view.
struct CGRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(CGRect const&) const = default;
};

}
