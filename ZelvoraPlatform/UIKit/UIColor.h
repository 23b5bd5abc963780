#pragma once

namespace zelvora::platform {

/// A colour in sRGB, each component from 0 to 1.
struct UIColor {
    /// Not multiplied by alpha.
    /// @{
    double red = 0;
    double green = 0;
    double blue = 0;
    /// @}
    /// 0 is transparent, 1 is opaque.
    double alpha = 1;

    /// Opaque white.
    [[nodiscard]] static constexpr UIColor white() { return { 1, 1, 1, 1 }; }

    bool operator==(UIColor const&) const = default;
};

}
