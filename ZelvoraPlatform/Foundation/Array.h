#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

namespace zelvora::platform {

/// A persistent sequence of values: every change returns a new version and leaves the older ones as they were.
/// Appending to the newest version and dropping from the front are amortized O(1), because versions share their
/// elements; appending to an older version copies it first.
///
///     Array const queue { 1, 2 };
///     Array const longer = queue.appending(3).droppingFirst(1); // queue is still 1, 2
///
/// Versions may be used on different threads at once. A version keeps in memory what was appended after it; dropped
/// elements are freed in chunks of at most 512, or by parts.
class ZELVORA_API Array final {
    struct Chunk;

public:
    /// Valid while the array that it came from or a copy of it lives. Compare it only with iterators of the same array.
    class Iterator final {
    public:
        using value_type = Value;
        using difference_type = std::ptrdiff_t;

        Iterator() = default;
        Value const& operator*() const;
        Value const* operator->() const { return &**this; }
        Iterator& operator++();
        Iterator operator++(int);
        bool operator==(Iterator const& other) const { return m_position == other.m_position; }

    private:
        friend class Array;
        Iterator(Chunk const* chunk, std::uint64_t position, std::uint64_t end)
            : m_chunk(chunk)
            , m_position(position)
            , m_end(end)
        {
        }

        Chunk const* m_chunk = nullptr;
        std::uint64_t m_position = 0;
        std::uint64_t m_end = 0;
    };

    /// How an array is made from an older one: drop `dropped` elements from the front of the older one, then append the
    /// newer one's elements from index `firstAppended` on.
    struct Difference {
        /// How many elements at the front of the older array are not in the newer one.
        std::size_t dropped = 0;
        /// The index, in the newer array, of what the older one lacks; the newer one's size if that is nothing.
        std::size_t firstAppended = 0;
    };

    /// Consecutive elements that are made when one of them is first read, such as those that a store keeps encoded.
    struct Part {
        /// How many elements `make` returns: any other number stops the process. A part without elements is left out.
        std::size_t count = 0;
        /// The deepest nesting of an element, or more.
        std::size_t nesting = 0;
        /// One bit for each kind that an element may be of: the kind's number is the bit's place.
        std::uint8_t kinds = 0;
        /// Makes the elements, all `count` of them, on the thread that reads one. They are kept, and it is not called
        /// again. Only `visit` may have called it before.
        std::function<std::vector<Value>()> make;
    };

    Array() = default;
    /// These elements, in this order.
    Array(std::initializer_list<Value> elements);
    /// These elements, in this order. Up to 512 of them are taken over as they are if the vector is moved in.
    /// @{
    explicit Array(std::vector<Value> const& elements);
    explicit Array(std::vector<Value>&& elements);
    /// @}
    /// The elements of these parts, in this order. None is made yet.
    explicit Array(std::vector<Part> parts);

    /// Elements of a part that have not been made yet count as well. O(1).
    /// @{
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(m_end - m_begin); }
    [[nodiscard]] bool isEmpty() const { return m_begin == m_end; }
    /// @}
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const;

    /// An index that is not below `size()` stops the process. Walks the chunks: iterate to read many elements.
    [[nodiscard]] Value const& at(std::size_t index) const;

    /// Calls `visit` with the elements in their order, until it returns false; returns whether it never did. Elements
    /// of a part that have to be made for it are not kept, so that a long array can be read in little memory.
    bool visit(std::function<bool(Value const&)> const& visit) const;

    /// With this element after the last one.
    [[nodiscard]] Array appending(Value element) const;
    /// Without the first `count` elements; empty if there are no more than that.
    [[nodiscard]] Array droppingFirst(std::size_t count) const;
    /// The first `count` elements, or all if there are fewer.
    [[nodiscard]] Array prefix(std::size_t count) const;

    /// How this array is made from an older version of it, in O(1). Absent if it was not made from `older` by dropping
    /// and appending alone, or if that is unknown, as it is for equal arrays that were built separately.
    [[nodiscard]] std::optional<Difference> differenceFrom(Array const& older) const;

    /// Whether all elements are of one kind; true for an empty array. O(1) if the array never contained another kind.
    [[nodiscard]] bool holdsOnly(Value::Kind kind) const;

    /// As `Value::nesting`, at least 1.
    [[nodiscard]] std::size_t nesting() const { return m_nesting; }

    bool operator==(Array const& other) const;

private:
    /// Appends a link that is full, while nobody else has this array.
    void link(std::shared_ptr<Chunk> chunk);
    void append(Value element);
    void note(Value const& element);

    std::shared_ptr<Chunk> m_head;
    std::shared_ptr<Chunk> m_tail;
    std::uint64_t m_begin = 0;
    std::uint64_t m_end = 0;
    std::size_t m_nesting = 1;
    // One bit per kind. A dropped element leaves its bit set.
    std::uint8_t m_kinds = 0;
};

}
