#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

namespace zelvora::platform {

/// A persistent sequence of values. Appending to the newest version and dropping from the front are amortised O(1) and
/// leave older versions as they were; appending to an older version copies it first. Versions may be used on different
/// threads at once.
class ZELVORA_API Array final {
    struct Chunk;

public:
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

    /// How one array came from another: so many dropped from its head, then the elements from `firstAppended` on
    /// appended.
    struct Difference {
        std::size_t dropped = 0;
        std::size_t firstAppended = 0;
    };

    Array() = default;
    Array(std::initializer_list<Value> elements);
    explicit Array(std::vector<Value> const& elements);

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(m_end - m_begin); }
    [[nodiscard]] bool isEmpty() const { return m_begin == m_end; }
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const;

    /// The element at an index below `size()`. Walks to it: for many elements iterate.
    [[nodiscard]] Value const& at(std::size_t index) const;

    [[nodiscard]] Array appending(Value element) const;
    /// Without the first `count` elements; empty where there are no more.
    [[nodiscard]] Array droppingFirst(std::size_t count) const;
    /// The first `count` elements, or all where there are fewer.
    [[nodiscard]] Array prefix(std::size_t count) const;

    /// The difference that makes this array from an older version of it, in O(1); absent where this one was not made
    /// from the other by dropping and appending alone, or that cannot be told. `firstAppended` is an index into this
    /// array.
    [[nodiscard]] std::optional<Difference> differenceFrom(Array const& older) const;

    /// Whether all elements are of one kind. O(1) for an array that never held another kind.
    [[nodiscard]] bool holdsOnly(Value::Kind kind) const;

    [[nodiscard]] std::size_t nesting() const { return m_nesting; }

    bool operator==(Array const& other) const;

private:
    void append(Value element);

    std::shared_ptr<Chunk> m_head;
    std::shared_ptr<Chunk> m_tail;
    std::uint64_t m_begin = 0;
    std::uint64_t m_end = 0;
    std::size_t m_nesting = 1;
    // One bit a kind; what was dropped leaves its bit behind.
    std::uint8_t m_kinds = 0;
};

}
