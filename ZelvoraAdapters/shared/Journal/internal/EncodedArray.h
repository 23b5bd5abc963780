#pragma once

#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// An array while the file that it is in is being read. Its elements stay encoded, so that a long queue of which only
/// the head is needed costs neither the time nor the memory of values.
class EncodedArray final {
public:
    EncodedArray() = default;
    /// From an encoded array that `skipValue` has checked.
    explicit EncodedArray(std::string_view value);

    [[nodiscard]] std::size_t size() const { return m_size; }
    /// Appends encoded elements that `skipValue` has checked.
    void append(std::string_view elements, std::uint64_t count);
    /// The same for a single element, whose shape is known.
    void append(std::string_view element, ValueShape shape);
    /// `count` is at most the size.
    void dropFirst(std::size_t count);

    /// The array, whose elements are decoded when they are first read. Leaves this empty.
    [[nodiscard]] platform::Array takeArray();

private:
    struct Part {
        std::string bytes;
        std::size_t count = 0;
        std::size_t nesting = 0;
        std::uint8_t kinds = 0;
    };

    std::deque<Part> m_parts;
    /// How many elements at the beginning of the first part are no longer in the array.
    std::size_t m_dropped = 0;
    std::size_t m_size = 0;
};

}
