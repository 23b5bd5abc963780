#pragma once

namespace zelvora::platform {

/// A rectangle in points, its origin at the top left of the containing view.
struct CGRect {
    /// The corner at the top left.
    /// @{
    double x = 0;
    double y = 0;
    /// @}
    /// From there to the corner at the bottom right.
    /// @{
    double width = 0;
    double height = 0;
    /// @}

    bool operator==(CGRect const&) const = default;

    /// For tests, which print what they compare: "(0, 47, 390, 56)", in the order of the members.
    template<typename Stream>
    friend Stream& operator<<(Stream& stream, CGRect const& rect)
    {
        return stream << '(' << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ')';
    }
};

}
