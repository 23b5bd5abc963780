#include "ZelvoraPlatform/Foundation/Value.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <utility>

namespace zelvora::platform {

namespace {

template<typename Content, typename Held>
Content const* shared(Held const& held)
{
    auto const* const pointer = std::get_if<std::shared_ptr<Content const>>(&held);
    return pointer ? pointer->get() : nullptr;
}

template<typename Content, typename Held>
std::optional<Content> plain(Held const& held)
{
    auto const* const content = std::get_if<Content>(&held);
    return content ? std::optional(*content) : std::nullopt;
}

}

Value::Value(std::string text) : m_held(std::make_shared<std::string const>(std::move(text))) { }

Value::Value(std::string_view text) : m_held(std::make_shared<std::string const>(text)) { }

Value::Value(char const* text) : Value(std::string_view(text)) { }

Value::Value(platform::Date date) : m_held(date) { }

Value::Value(platform::Data data) : m_held(std::make_shared<platform::Data const>(std::move(data))) { }

Value::Value(platform::Array array) : m_held(std::make_shared<platform::Array const>(std::move(array))) { }

Value::Value(platform::Dictionary dictionary)
    : m_held(std::make_shared<platform::Dictionary const>(std::move(dictionary)))
{
}

// Defined here, because each is long and would otherwise be compiled into every source that uses a value.
Value::Value(Value const& other) = default;
Value::Value(Value&& other) noexcept = default;
Value& Value::operator=(Value const& other) = default;
Value& Value::operator=(Value&& other) noexcept = default;
Value::~Value() = default;

std::optional<bool> Value::boolean() const
{
    return plain<bool>(m_held);
}
std::optional<double> Value::number() const
{
    if (auto const* const number = std::get_if<double>(&m_held))
        return *number;
    auto const integer = largeInteger();
    if (!integer)
        return std::nullopt;
    auto const magnitude = static_cast<double>(integer->magnitude);
    return integer->isNegative ? -magnitude : magnitude;
}
std::optional<LargeInteger> Value::largeInteger() const
{
    return plain<LargeInteger>(m_held);
}
std::string const* Value::text() const
{
    return shared<std::string>(m_held);
}
std::optional<Date> Value::date() const
{
    return plain<platform::Date>(m_held);
}
Data const* Value::data() const
{
    return shared<platform::Data>(m_held);
}
Array const* Value::array() const
{
    return shared<platform::Array>(m_held);
}
Dictionary const* Value::dictionary() const
{
    return shared<platform::Dictionary>(m_held);
}

std::size_t Value::nesting() const
{
    if (auto const* elements = array())
        return elements->nesting();
    if (auto const* entries = dictionary())
        return entries->nesting();
    return 0;
}

}
