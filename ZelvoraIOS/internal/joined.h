#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace zelvora::internal {

/// The parts one after another, in a single allocation: log lines and keys are made for every message of a page.
[[nodiscard]] inline std::string joined(std::initializer_list<std::string_view> parts)
{
    std::size_t length = 0;
    for (auto const part : parts)
        length += part.size();
    std::string text;
    text.reserve(length);
    for (auto const part : parts)
        text += part;
    return text;
}

}
