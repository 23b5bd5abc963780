#pragma once

#include <cstddef>
#include <string_view>

namespace zelvora::gtk {

/// Texts that a script has joined into one, with one character between each two.
class ScriptTexts final {
public:
    /// `joined` is UTF-8 and outlives this object.
    explicit ScriptTexts(std::string_view joined) : m_rest(joined) { }

    /// The next text, of a length as scripts count it, in UTF-16 units.
    [[nodiscard]] std::string_view take(std::size_t length);

private:
    std::string_view m_rest;
};

}
