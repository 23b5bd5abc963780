#include "ZelvoraAdapters/shared/Journal/internal/EncodedArray.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zelvora::shared {

using platform::Array;
using platform::Value;

namespace {

// An upload reads this many events; and what is decoded at once is kept at once.
constexpr std::size_t largestPart = 512;

std::vector<Value> makeElements(std::string_view bytes, std::size_t count)
{
    std::vector<Value> elements;
    elements.reserve(count);
    for (ByteReader in { bytes }; !in.isAtEnd();) {
        auto element = readValue(in, Value::maximumNesting - 1);
        if (!element)
            break;
        elements.push_back(*std::move(element));
    }
    return elements;
}

}

EncodedArray::EncodedArray(std::string_view value)
{
    ByteReader in { value };
    (void)in.byte();
    auto const count = in.varint().value_or(0);
    append(in.rest(), count);
}

void EncodedArray::append(std::string_view elements, std::uint64_t count)
{
    ByteReader in { elements };
    for (std::uint64_t i = 0; i < count; ++i) {
        auto const before = in.rest();
        auto const shape = skipValue(in, Value::maximumNesting - 1);
        if (!shape)
            return;
        append(before.substr(0, before.size() - in.remaining()), *shape);
    }
}

void EncodedArray::append(std::string_view element, ValueShape shape)
{
    if (m_parts.empty() || m_parts.back().count == largestPart) {
        // The space that is left over would stay as long as the part.
        if (!m_parts.empty())
            m_parts.back().bytes.shrink_to_fit();
        m_parts.emplace_back();
    }
    auto& part = m_parts.back();
    part.bytes += element;
    ++part.count;
    part.nesting = std::max(part.nesting, shape.nesting);
    part.kinds = static_cast<std::uint8_t>(part.kinds | (1U << static_cast<unsigned>(shape.kind)));
    ++m_size;
}

void EncodedArray::dropFirst(std::size_t count)
{
    m_size -= count;
    m_dropped += count;
    while (!m_parts.empty() && m_dropped >= m_parts.front().count) {
        m_dropped -= m_parts.front().count;
        m_parts.pop_front();
    }
}

Array EncodedArray::takeArray()
{
    std::vector<Array::Part> parts;
    parts.reserve(m_parts.size());
    for (auto& part : m_parts) {
        auto make = [bytes = std::move(part.bytes), count = part.count] { return makeElements(bytes, count); };
        parts.push_back({ .count = part.count, .nesting = part.nesting, .kinds = part.kinds, .make = std::move(make) });
    }
    auto const dropped = std::exchange(m_dropped, 0);
    m_parts.clear();
    m_size = 0;
    return Array { std::move(parts) }.droppingFirst(dropped);
}

}
