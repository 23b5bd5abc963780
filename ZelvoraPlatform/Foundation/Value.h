#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace zelvora::platform {

class Array;
class Dictionary;

/// A JSON null. It is a value; the absence of a value is an empty `std::optional`.
struct Null {
    bool operator==(Null const&) const = default;
};

/// An integer of up to 64 bits and a sign.
struct LargeInteger {
    /// From an integer of any built-in type.
    template<std::integral Integer>
    [[nodiscard]] static constexpr LargeInteger of(Integer integer)
    {
        auto const bits = static_cast<std::uint64_t>(integer);
        return std::cmp_less(integer, 0) ? LargeInteger { 0 - bits, true } : LargeInteger { bits, false };
    }
    /// Whether converting it to a double and back gives the same integer.
    [[nodiscard]] constexpr bool fitsADouble() const
    {
        constexpr auto digits = std::numeric_limits<double>::digits;
        return magnitude >> digits == 0 || (magnitude >> std::countr_zero(magnitude)) >> digits == 0;
    }

    bool operator==(LargeInteger const&) const = default;

    /// Without the sign.
    std::uint64_t magnitude = 0;
    /// False for 0, so that equal integers have equal members.
    bool isNegative = false;
};

/// A property-list value: null marker, boolean, number, text, date, data, array or dictionary.
///
///     Value const event = Dictionary { { "eventId", "cart_add" }, { "count", 2 } };
///     auto const* count = event.dictionary()->find("count"); // *count->number() == 2.0
///
/// Immutable and shared: a copy costs at most a reference count, and one value may be read on many threads. A value
/// that was moved from may only be assigned or destroyed.
///
/// A boolean is never a number. A number is a double, as in the pages, or an integer that no double can hold: a host's
/// 64-bit integer is stored, compared and written exactly, though a page that reads it rounds it. Text is UTF-8, which
/// is not checked here. An accessor returns the content only if the value is of its kind: nothing throws and nothing
/// converts.
///
/// A value may nest to any depth; it is compared and destroyed without recursion. Each service says what depth it
/// accepts.
class ZELVORA_API Value final {
public:
    /// What a value is. `Array::Part::kinds` relies on the order.
    enum class Kind : std::uint8_t { Null, Boolean, Number, Text, Date, Data, Array, Dictionary };

    /// The deepest nesting that the services which write values down (preferences, JSON) accept: the phone's own limit.
    static constexpr std::size_t maximumNesting = 512;

    /// The null marker.
    /// @{
    Value() = default;
    Value(Null) { }
    /// @}
    /// A boolean. Only a `bool` is one: neither an integer nor a pointer becomes a boolean by itself.
    template<std::same_as<bool> Boolean>
    Value(Boolean boolean) : m_held(boolean)
    {
    }
    /// A number. An integer stays exact even if no double can hold it.
    template<typename Number>
        requires((std::integral<Number> || std::floating_point<Number>) && !std::same_as<Number, bool>)
    Value(Number number) : m_held(static_cast<double>(number))
    {
        if constexpr (std::integral<Number>) {
            if (auto const integer = LargeInteger::of(number); !integer.fitsADouble())
                m_held = integer;
        }
    }
    /// Text, which may contain NULs.
    /// @{
    Value(std::string text);
    Value(std::string_view text);
    /// @}
    /// Text up to the first NUL. Must not be null.
    Value(char const* text);
    /// A value of this kind. The elements of a container are shared, not copied.
    /// @{
    Value(platform::Date date);
    Value(platform::Data data);
    Value(platform::Array array);
    Value(platform::Dictionary dictionary);
    /// @}

    /// @{
    /// Shares what the other one holds.
    Value(Value const& other);
    Value(Value&& other) noexcept;
    Value& operator=(Value const& other);
    Value& operator=(Value&& other) noexcept;
    /// @}
    ~Value();

    /// What this value is, and so which accessor has its content.
    [[nodiscard]] Kind kind() const
    {
        return std::holds_alternative<LargeInteger>(m_held) ? Kind::Number : static_cast<Kind>(m_held.index());
    }
    /// Whether this is the null marker, which has no content.
    [[nodiscard]] bool isNull() const { return kind() == Kind::Null; }
    /// The content of a value of this kind; absent, or nullptr, for any other. The pointers stay valid while this value
    /// or a copy of it lives.
    /// @{
    [[nodiscard]] std::optional<bool> boolean() const;
    /// Rounded if the number is an integer that no double can hold.
    [[nodiscard]] std::optional<double> number() const;
    /// The number, if it is an integer that no double can hold.
    [[nodiscard]] std::optional<LargeInteger> largeInteger() const;
    [[nodiscard]] std::string const* text() const;
    [[nodiscard]] std::optional<platform::Date> date() const;
    [[nodiscard]] platform::Data const* data() const;
    [[nodiscard]] platform::Array const* array() const;
    [[nodiscard]] platform::Dictionary const* dictionary() const;
    /// @}

    /// How deep containers nest: 0 for a plain value, 1 for an empty array. An upper bound if an array lost elements.
    [[nodiscard]] std::size_t nesting() const;

    /// Equal kinds with equal contents. NaN equals nothing.
    bool operator==(Value const& other) const;

private:
    // The order is that of Kind; the last one is a number, too.
    std::variant<Null, bool, double, std::shared_ptr<std::string const>, platform::Date,
        std::shared_ptr<platform::Data const>, std::shared_ptr<platform::Array const>,
        std::shared_ptr<platform::Dictionary const>, LargeInteger>
        m_held;
};

/// A readable text for log lines. What exceeds `debugDescriptionLimit` bytes is replaced by a note of how much was left
/// out, so that the cost does not grow with the value. An absent value reads "nil".
/// @{
[[nodiscard]] ZELVORA_API std::string debugDescription(Value const& value);
[[nodiscard]] ZELVORA_API std::string debugDescription(std::optional<Value> const& value);
/// @}
/// The same, but text is not quoted unless it is inside a container.
[[nodiscard]] ZELVORA_API std::string description(Value const& value);
/// In bytes, the note not included.
inline constexpr std::size_t debugDescriptionLimit = 512;

}
