#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <string>

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
            return write(*value.boolean() ? "true" : "false");
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
        auto const room = debugDescriptionLimit - std::min(debugDescriptionLimit, m_text.size());
        write(text);
        if (text.size() > room)
            leaveOut(text.size() - room, "bytes");
    }

    [[nodiscard]] std::string finish()
    {
        if (!isFull())
            return std::move(m_text);
        auto cut = debugDescriptionLimit;
        // Not inside a character.
        while (cut > 0 && (static_cast<unsigned char>(m_text[cut]) & 0xC0U) == 0x80)
            --cut;
        m_text.resize(cut);
        m_text += "... (";
        m_text += m_leftOut.empty() ? "cut" : m_leftOut;
        m_text += ")";
        return std::move(m_text);
    }

private:
    [[nodiscard]] bool isFull() const { return m_text.size() > debugDescriptionLimit; }

    void write(std::string_view text) { m_text += text.substr(0, debugDescriptionLimit + 4); }

    // Called for the innermost container or text first. The outermost overwrites it, because it says most.
    void leaveOut(std::size_t count, std::string_view what)
    {
        if (count > 0)
            m_leftOut = std::to_string(count) + " more " + std::string(what);
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
                write(", ");
            write("\"");
            write(key);
            write("\": ");
            describe(value);
            ++told;
        }
        if (isFull())
            leaveOut(dictionary.size() - told, "members");
        write("}");
    }

    std::string m_text;
    std::string m_leftOut;
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
