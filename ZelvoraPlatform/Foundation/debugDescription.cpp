#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zelvora::platform {

namespace {

// Writes until the limit is reached. Every container costs a bracket, so the limit bounds the recursion too.
class Describer final {
public:
    void describe(Value const& value)
    {
        switch (value.kind()) {
        case Value::Kind::Null:
            return write("<null>");
        case Value::Kind::Boolean:
            return write(std::string_view(*value.boolean() ? "true" : "false"));
        case Value::Kind::Number:
            return write(numberText(value));
        case Value::Kind::Text:
            return describeText(*value.text());
        case Value::Kind::Date:
            write("<date ");
            write(numberText(value.date()->timeIntervalSince1970));
            return write(">");
        case Value::Kind::Data:
            write("<");
            write(std::to_string(value.data()->bytes.size()));
            return write(" bytes>");
        case Value::Kind::Array:
            return describeArray(*value.array());
        case Value::Kind::Dictionary:
            return describeDictionary(*value.dictionary());
        }
    }

    void writeText(std::string const& text)
    {
        auto const room = debugDescriptionLimit - std::min(debugDescriptionLimit, m_size);
        write(std::string_view(text));
        if (text.size() > room)
            leaveOut(text.size() - room, "bytes");
    }

    [[nodiscard]] std::string finish() const
    {
        if (!isFull())
            return { m_text.data(), m_size };
        auto cut = debugDescriptionLimit;
        // Not inside a character.
        while (cut > 0 && (static_cast<unsigned char>(m_text.at(cut)) & 0xC0U) == 0x80)
            --cut;
        constexpr std::size_t longestNote = 48;
        std::string text;
        text.reserve(cut + longestNote);
        text.append(m_text.data(), cut).append("... (");
        if (m_leftOut == 0)
            return text.append("cut)");
        return text.append(std::to_string(m_leftOut)).append(" more ").append(m_whatWasLeftOut).append(")");
    }

private:
    [[nodiscard]] bool isFull() const { return m_size > debugDescriptionLimit; }

    void write(std::string_view text) { m_size += text.copy(m_text.data() + m_size, fullSize - m_size); }

    // Most of what is written are brackets and quotes. Their lengths are known here, and they need no call.
    template<std::size_t Size>
    void write(char const (&literal)[Size]) // NOLINT(*-avoid-c-arrays): the type of a literal
    {
        static_assert(Size - 1 <= longestLiteral);
        std::copy_n(literal, Size - 1, m_text.data() + m_size);
        m_size = std::min(m_size + Size - 1, fullSize);
    }

    // Called for the innermost container or text first. The outermost overwrites it, because it says most.
    void leaveOut(std::size_t count, std::string_view what)
    {
        if (count == 0)
            return;
        m_leftOut = count;
        m_whatWasLeftOut = what;
    }

    void describeText(std::string const& text)
    {
        write("\"");
        writeText(text);
        write("\"");
    }

    void describeArray(Array const& array)
    {
        write("[");
        std::size_t told = 0;
        for (auto const& element : array) {
            if (isFull())
                break;
            if (told > 0)
                write(", ");
            describe(element);
            ++told;
        }
        if (isFull())
            leaveOut(array.size() - told, "elements");
        write("]");
    }

    void describeDictionary(Dictionary const& dictionary)
    {
        write("{");
        std::size_t told = 0;
        for (auto const& [key, value] : dictionary) {
            if (isFull())
                break;
            if (told > 0)
                write(", \"");
            else
                write("\"");
            write(std::string_view(key));
            write("\": ");
            describe(value);
            ++told;
        }
        if (isFull())
            leaveOut(dictionary.size() - told, "members");
        write("}");
    }

    // One byte more than the limit, which tells that there was more.
    static constexpr std::size_t fullSize = debugDescriptionLimit + 1;
    static constexpr std::size_t longestLiteral = 8;
    // Every message of a page is described, so this needs no memory of its own.
    std::array<char, fullSize + longestLiteral> m_text {};
    std::size_t m_size = 0;
    std::size_t m_leftOut = 0;
    std::string_view m_whatWasLeftOut;
};

}

std::string debugDescription(Value const& value)
{
    Describer describer;
    describer.describe(value);
    return describer.finish();
}

std::string debugDescription(std::optional<Value> const& value)
{
    return value ? debugDescription(*value) : "nil";
}

std::string description(Value const& value)
{
    auto const* text = value.text();
    if (!text)
        return debugDescription(value);
    Describer describer;
    describer.writeText(*text);
    return describer.finish();
}

}
