#include "ZelvoraPlatform/Foundation/NumberText.h"

#include "ZelvoraPlatform/Foundation/Value.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zelvora::platform {

std::string numberText(double number)
{
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number < 0 ? "-inf" : "inf";
    // The shortest form writes 100000 as 1e+05.
    constexpr double plainLimit = 1e16;
    std::array<char, 64> buffer {};
    auto* const first = buffer.data();
    auto* const last = first + buffer.size();
    auto const isPlain = std::trunc(number) == number && std::abs(number) < plainLimit;
    auto const written =
        isPlain ? std::to_chars(first, last, number, std::chars_format::fixed) : std::to_chars(first, last, number);
    return { first, written.ptr };
}

std::string numberText(Value const& number)
{
    if (auto const integer = number.largeInteger())
        return (integer->isNegative ? "-" : "") + std::to_string(integer->magnitude);
    return numberText(*number.number());
}

}
