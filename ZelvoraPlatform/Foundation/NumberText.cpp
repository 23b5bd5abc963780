#include "ZelvoraPlatform/Foundation/NumberText.h"

#include "ZelvoraPlatform/Foundation/Value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace zelvora::platform {

namespace {

using Buffer = std::array<char, 64>;

std::string_view write(double number, Buffer& buffer)
{
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number < 0 ? "-inf" : "inf";
    auto* const first = buffer.data();
    auto* const last = first + buffer.size();
    // The shortest form writes 100000 as 1e+05. An integer has no negative zero.
    constexpr double plainLimit = 1e16;
    auto const isPlain = std::trunc(number) == number && std::abs(number) < plainLimit;
    auto const isInteger = isPlain && (number != 0 || !std::signbit(number));
    auto const written =
        isInteger ? std::to_chars(first, last, static_cast<std::int64_t>(number)) : std::to_chars(first, last, number);
    return { first, written.ptr };
}

std::string_view write(LargeInteger integer, Buffer& buffer)
{
    auto* const first = buffer.data();
    *first = '-';
    auto const written = std::to_chars(first + 1, first + buffer.size(), integer.magnitude);
    return { integer.isNegative ? first : first + 1, written.ptr };
}

std::string_view write(Value const& number, Buffer& buffer)
{
    if (auto const integer = number.largeInteger())
        return write(*integer, buffer);
    return write(*number.number(), buffer);
}

}

std::string numberText(double number)
{
    Buffer buffer; // NOLINT(*-member-init): only what was written is read
    return std::string(write(number, buffer));
}

std::string numberText(Value const& number)
{
    Buffer buffer; // NOLINT(*-member-init)
    return std::string(write(number, buffer));
}

void appendNumberText(std::string& text, Value const& number)
{
    Buffer buffer; // NOLINT(*-member-init)
    text += write(number, buffer);
}

}
