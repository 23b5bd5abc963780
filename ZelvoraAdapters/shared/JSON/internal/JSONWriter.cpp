#include "ZelvoraAdapters/shared/JSON/internal/JSONWriter.h"

#include "ZelvoraAdapters/shared/JSON/internal/JSONError.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace zelvora::shared {

namespace {

using platform::Value;

// The functions below recurse, so the depth is checked first.
bool isShallowContainer(Value const& value)
{
    return (value.array() || value.dictionary()) && value.nesting() <= Value::maximumNesting;
}

// Uses `Array::visit`, as the writer does, because a page may ask for a long queue whose elements are not made yet.
bool containsOnlyJSON(Value const& value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
    case Value::Kind::Boolean:
    case Value::Kind::Text:
        return true;
    case Value::Kind::Number:
        return std::isfinite(*value.number());
    case Value::Kind::Array:
        return value.array()->visit(containsOnlyJSON);
    case Value::Kind::Dictionary:
        return std::ranges::all_of(
            *value.dictionary(), [](auto const& entry) { return containsOnlyJSON(entry.second); });
    case Value::Kind::Date:
    case Value::Kind::Data:
        break;
    }
    return false;
}

// Looked up, because most of what is written are characters of texts.
constexpr auto s_needsEscape = [] {
    std::array<bool, 256> needs {};
    std::fill_n(needs.begin(), ' ', true);
    needs['"'] = needs['\\'] = true;
    return needs;
}();

bool needsEscape(char character)
{
    return s_needsEscape[static_cast<unsigned char>(character)];
}

/// Writes values whose depth is bounded, and so the recursion.
///
/// Our own, because the library that reads JSON can write only its own type, and converting a value and writing that
/// takes longer than this (docs/performance.md has the figures of bench/json.cpp). The library would also report text
/// that is not UTF-8 by an exception.
class Writer final {
public:
    explicit Writer(platform::JSONWritingOptions options)
        : m_pretty(options == platform::JSONWritingOptions::PrettyPrinted)
    {
    }

    /// False if the value contains something that JSON cannot represent, or text that is not UTF-8.
    bool write(Value const& value)
    {
        switch (value.kind()) {
        case Value::Kind::Null:
            return put("null");
        case Value::Kind::Boolean:
            return put(*value.boolean() ? "true" : "false");
        case Value::Kind::Number:
            platform::appendNumberText(m_text, value);
            return std::isfinite(*value.number());
        case Value::Kind::Text:
            return writeText(*value.text());
        case Value::Kind::Array:
            return writeArray(*value.array());
        case Value::Kind::Dictionary:
            return writeDictionary(*value.dictionary());
        case Value::Kind::Date:
        case Value::Kind::Data:
            break;
        }
        return false;
    }

    [[nodiscard]] std::string takeText() { return std::move(m_text); }

private:
    bool put(std::string_view text)
    {
        m_text += text;
        return true;
    }

    bool writeArray(platform::Array const& array)
    {
        open('[');
        auto const isWritten = array.visit([this, isFirst = true](Value const& element) mutable {
            startItem(isFirst);
            return write(element);
        });
        close(']', array.isEmpty());
        return isWritten;
    }

    bool writeDictionary(platform::Dictionary const& dictionary)
    {
        open('{');
        bool isFirst = true;
        for (auto const& [key, value] : dictionary) {
            startItem(isFirst);
            if (!writeText(key) || !put(m_pretty ? ": " : ":") || !write(value))
                return false;
        }
        close('}', dictionary.isEmpty());
        return true;
    }

    void open(char bracket)
    {
        m_text += bracket;
        ++m_depth;
    }

    void startItem(bool& isFirst)
    {
        if (!std::exchange(isFirst, false))
            m_text += ',';
        startLine();
    }

    void close(char bracket, bool isEmpty)
    {
        --m_depth;
        if (!isEmpty)
            startLine();
        m_text += bracket;
    }

    void startLine()
    {
        if (m_pretty)
            m_text.append("\n").append(2 * m_depth, ' ');
    }

    bool writeText(std::string_view text)
    {
        if (!platform::isValidUTF8(text))
            return false;
        m_text += '"';
        while (!text.empty()) {
            auto const plain = static_cast<std::size_t>(std::ranges::find_if(text, needsEscape) - text.begin());
            m_text += text.substr(0, plain);
            text.remove_prefix(plain);
            if (text.empty())
                break;
            writeEscaped(text.front());
            text.remove_prefix(1);
        }
        m_text += '"';
        return true;
    }

    void writeEscaped(char character)
    {
        constexpr std::string_view shortForms = "\"\"\\\\\bb\ff\nn\rr\tt";
        for (std::size_t index = 0; index < shortForms.size(); index += 2) {
            if (character == shortForms[index]) {
                m_text.append("\\").push_back(shortForms[index + 1]);
                return;
            }
        }
        constexpr std::string_view digits = "0123456789abcdef";
        m_text += character < 0x10 ? "\\u000" : "\\u001";
        m_text += digits[static_cast<unsigned char>(character) % 0x10];
    }

    bool m_pretty;
    std::size_t m_depth = 0;
    std::string m_text;
};

}

bool isWritableAsJSON(Value const& value)
{
    return isShallowContainer(value) && containsOnlyJSON(value);
}

std::expected<platform::Data, platform::Error> writeJSON(Value const& jsonObject, platform::JSONWritingOptions options)
{
    Writer writer(options);
    if (isShallowContainer(jsonObject) && writer.write(jsonObject))
        return platform::Data { writer.takeText() };
    return std::unexpected(
        jsonError(isWritableAsJSON(jsonObject) ? "The value contains text that is not UTF-8."
                                               : "The value contains something that JSON cannot represent."));
}

}
