#pragma once

#include <cstddef>
#include <string_view>

namespace zelvora::gtk {

/// Texts that a script has joined into one, with one character between each two.
class ScriptTexts final {
public:
    /// `joined` is UTF-8, outlives this object, and has the length `length` as scripts count it, in UTF-16 units.
    ScriptTexts(std::string_view joined, std::size_t length);

    /// The next text, of a length in UTF-16 units.
    [[nodiscard]] std::string_view take(std::size_t length);

private:
    [[nodiscard]] std::size_t bytesOf(std::size_t length) const;

    std::string_view m_rest;
    bool m_hasOneByteForEachUnit;
};

}
