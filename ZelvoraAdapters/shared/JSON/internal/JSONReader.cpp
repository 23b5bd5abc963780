#include "ZelvoraAdapters/shared/JSON/internal/JSONReader.h"

#include "ZelvoraAdapters/shared/JSON/internal/JSONError.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace zelvora::shared {

namespace {

using JSON = nlohmann::json;
using platform::Dictionary;
using platform::Value;

/// Builds a value from the parser's events. A handler that returns false stops the parser.
class ValueBuilder final : public nlohmann::json_sax<JSON> {
public:
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
    bool string(string_t& text) override { return add(std::move(text)); }
    bool binary(binary_t&) override { return refuse("it contains binary data"); }
    bool start_object(std::size_t) override { return open(Members {}); }
    bool key(string_t& key) override
    {
        std::get<Members>(m_open.back()).key = std::move(key);
        return true;
    }
    bool end_object() override { return close(Dictionary(std::move(std::get<Members>(m_open.back()).entries))); }
    bool start_array(std::size_t) override { return open(Elements {}); }
    bool end_array() override { return close(platform::Array(std::move(std::get<Elements>(m_open.back())))); }
    bool parse_error(std::size_t position, std::string const&, JSON::exception const&) override
    {
        return refuse("it is malformed at byte " + std::to_string(position));
    }

private:
    struct Members {
        Dictionary::Entries entries;
        std::string key;
    };
    using Elements = std::vector<Value>;

    bool refuse(std::string const& reason)
    {
        m_error = jsonError("The text is not JSON that can be read: " + reason + ".");
        return false;
    }

    bool open(std::variant<Elements, Members> container)
    {
        if (m_open.size() == Value::maximumNesting)
            return refuse("it nests deeper than " + std::to_string(Value::maximumNesting) + " levels");
        m_open.push_back(std::move(container));
        return true;
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
        if (auto* elements = std::get_if<Elements>(&m_open.back())) {
            elements->emplace_back(std::forward<Content>(content));
            return true;
        }
        auto& members = std::get<Members>(m_open.back());
        members.entries.emplace_back(std::move(members.key), std::forward<Content>(content));
        return true;
    }

    std::vector<std::variant<Elements, Members>> m_open;
    Value m_result;
    std::optional<platform::Error> m_error;
};

}

std::expected<Value, platform::Error> readJSON(platform::Data const& data)
{
    // The parser takes a NUL for the end of its input and would ignore what follows.
    if (data.bytes.contains('\0'))
        return std::unexpected(jsonError("The text is not JSON that can be read: it contains a NUL byte."));
    ValueBuilder builder;
    (void)JSON::sax_parse(data.bytes, &builder);
    return builder.takeResult();
}

}
