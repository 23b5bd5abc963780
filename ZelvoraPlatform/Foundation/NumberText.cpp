#include "ZelvoraPlatform/Foundation/NumberText.h"

#include "ZelvoraPlatform/Foundation/Value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace zelvora::platform {

std::string numberText(double number)
{
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number < 0 ? "-inf" : "inf";
    std::array<char, 64> buffer; // NOLINT(*-member-init): what is read of it was written
    auto* const first = buffer.data();
    auto* const last = first + buffer.size();
    // The shortest form writes 100000 as 1e+05. An integer has no negative zero.
    constexpr double plainLimit = 1e16;
    auto const isPlain = std::trunc(number) == number && std::abs(number) < plainLimit;
    auto const isInteger = isPlain && !(number == 0 && std::signbit(number));
    auto const written =
        isInteger ? std::to_chars(first, last, static_cast<std::int64_t>(number)) : std::to_chars(first, last, number);
    return { first, written.ptr };
}

std::string numberText(Value const& number)
{
    if (auto const integer = number.largeInteger())
        return (integer->isNegative ? "-" : "") + std::to_string(integer->magnitude);
    return numberText(*number.number());
}

}
