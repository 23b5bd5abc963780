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
    auto* const first = buffer.data();
    auto* const last = first + buffer.size();
    // The shortest form writes 100000 as 1e+05. An integer has no negative zero.
    constexpr double plainLimit = 1e16;
    if (std::abs(number) < plainLimit) {
        auto const integer = static_cast<std::int64_t>(number);
        if (static_cast<double>(integer) == number && (integer != 0 || !std::signbit(number)))
            return { first, std::to_chars(first, last, integer).ptr };
    } else if (std::isnan(number)) {
        return "nan";
    } else if (std::isinf(number)) {
        return number < 0 ? "-inf" : "inf";
    }
    return { first, std::to_chars(first, last, number).ptr };
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
