#include "ZelvoraAdapters/shared/JSON/internal/JSONReader.h"

#include "ZelvoraAdapters/shared/JSON/internal/JSONError.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::shared {

namespace {

using JSON = nlohmann::json;
using platform::Dictionary;
using platform::Value;

/// Builds a value from the parser's events. A handler that returns false stops the parser.
///
/// What the open containers hold so far is in two stacks that they share, so that each is made in one piece, of its
/// size.
class ValueBuilder final : public nlohmann::json_sax<JSON> {
public:
    /// The length of the text lets it make room for a long array at once, instead of moving it as it grows.
    explicit ValueBuilder(std::size_t length)
    {
        constexpr std::size_t bytesOfAnElement = 8;
        constexpr std::size_t mostRoom = 512;
        m_elements.reserve(std::min(length / bytesOfAnElement, mostRoom));
    }

    [[nodiscard]] std::expected<Value, platform::Error> takeResult()
    {
        if (m_error)
            return std::unexpected(*std::move(m_error));
        return std::move(m_result);
    }

    // nlohmann::json_sax
    bool null() override { return add(platform::Null {}); }
    bool boolean(bool boolean) override { return add(boolean); }
    bool number_integer(number_integer_t number) override { return add(number); }
    bool number_unsigned(number_unsigned_t number) override { return add(number); }
    bool number_float(number_float_t number, string_t const&) override { return add(number); }
    // Copied, because the parser goes on with its buffer, which it would have to allocate again.
    bool string(string_t& text) override { return add(std::string_view(text)); }
    bool binary(binary_t&) override { return refuse("it contains binary data"); }
    bool start_object(std::size_t) override { return open(Value::Kind::Dictionary, m_entries.size()); }
    bool key(string_t& key) override
    {
        m_entries.emplace_back(key, platform::Null {});
        return true;
    }
    bool end_object() override { return close(Dictionary(takeFromOpen(m_entries))); }
    bool start_array(std::size_t) override { return open(Value::Kind::Array, m_elements.size()); }
    bool end_array() override { return close(platform::Array(takeFromOpen(m_elements))); }
    bool parse_error(std::size_t position, std::string const&, JSON::exception const&) override
    {
        return refuse("it is malformed at byte " + std::to_string(position));
    }

private:
    struct Container {
        Value::Kind kind;
        /// The place of its first item in its stack.
        std::size_t first;
    };

    bool refuse(std::string const& reason)
    {
        m_error = jsonError("The text is not JSON that can be read: " + reason + ".");
        return false;
    }

    bool open(Value::Kind kind, std::size_t first)
    {
        if (m_open.size() == Value::maximumNesting)
            return refuse("it nests deeper than " + std::to_string(Value::maximumNesting) + " levels");
        m_open.push_back({ .kind = kind, .first = first });
        return true;
    }

    template<typename Item>
    std::vector<Item> takeFromOpen(std::vector<Item>& stack)
    {
        // The outermost one is handed over as it is, unless that would keep more memory than it needs.
        if (m_open.back().first == 0 && stack.size() > stack.capacity() / 2)
            return std::exchange(stack, {});
        auto const first = stack.begin() + static_cast<std::ptrdiff_t>(m_open.back().first);
        std::vector<Item> items(std::make_move_iterator(first), std::make_move_iterator(stack.end()));
        stack.erase(first, stack.end());
        return items;
    }

    bool close(Value container)
    {
        m_open.pop_back();
        if (!m_open.empty())
            return add(std::move(container));
        m_result = std::move(container);
        return true;
    }

    // What the value is made of, because it is made in its place: moving one is not free.
    template<typename Content>
    bool add(Content&& content)
    {
        if (m_open.empty())
            return refuse("its top level is neither an array nor an object");
        if (m_open.back().kind == Value::Kind::Array)
            m_elements.emplace_back(std::forward<Content>(content));
        else
            m_entries.back().second = std::forward<Content>(content);
        return true;
    }

    std::vector<Container> m_open;
    std::vector<Value> m_elements;
    Dictionary::Entries m_entries;
    Value m_result;
    std::optional<platform::Error> m_error;
};

}

std::expected<Value, platform::Error> readJSON(platform::Data const& data)
{
    // The parser takes a NUL for the end of its input and would ignore what follows.
    if (data.bytes.contains('\0'))
        return std::unexpected(jsonError("The text is not JSON that can be read: it contains a NUL byte."));
    ValueBuilder builder(data.bytes.size());
    (void)JSON::sax_parse(data.bytes, &builder);
    return builder.takeResult();
}

}
