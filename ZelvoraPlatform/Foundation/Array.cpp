#include "ZelvoraPlatform/Foundation/Array.h"

#include "ZelvoraPlatform/Foundation/Dismantling.h"
#include "ZelvoraPlatform/fatalError.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace zelvora::platform {

namespace {

constexpr std::size_t smallestChunk = 4;
constexpr std::size_t largestChunk = 512;

std::uint64_t makeLineage()
{
    static std::atomic<std::uint64_t> s_last = 0;
    return ++s_last;
}

}

// A link of the chain that all versions of one lineage share. Each slot is claimed once, by the version that ends
// there, and never written again. So two arrays of one lineage have the same element at the same position, and a reader
// sees only slots that were filled before its version was made.
struct Array::Chunk {
    Chunk(std::uint64_t chainLineage, std::uint64_t firstPosition, std::size_t chunkCapacity)
        : lineage(chainLineage)
        , first(firstPosition)
        , capacity(chunkCapacity)
        , elements(chunkCapacity)
    {
    }
    // With these elements and no slot for another.
    Chunk(std::uint64_t chainLineage, std::uint64_t firstPosition, std::vector<Value> allElements)
        : lineage(chainLineage)
        , first(firstPosition)
        , capacity(allElements.size())
        , claimed(capacity)
        , elements(std::move(allElements))
    {
    }
    Chunk(std::uint64_t chainLineage, std::uint64_t firstPosition, Part part)
        : lineage(chainLineage)
        , first(firstPosition)
        , capacity(part.count)
        , claimed(part.count)
        , unmade(std::make_unique<Unmade>(std::move(part.make)))
    {
    }
    ~Chunk()
    {
        for (auto& element : elements)
            Dismantling::take(element);
        drop(std::move(next));
    }
    Chunk(Chunk const&) = delete;
    Chunk& operator=(Chunk const&) = delete;

    // Destroying a long chain must not recurse, so the outermost destructor on the thread releases the links that come
    // in. It releases them by reference count like any other owner, because only the last owner sees what other threads
    // did to a link.
    static void drop(std::shared_ptr<Chunk> link)
    {
        if (!link)
            return;
        static thread_local std::vector<std::shared_ptr<Chunk>>* s_waiting = nullptr;
        if (s_waiting) {
            s_waiting->push_back(std::move(link));
            return;
        }
        std::vector<std::shared_ptr<Chunk>> waiting;
        s_waiting = &waiting;
        waiting.push_back(std::move(link));
        while (!waiting.empty()) {
            auto const dropped = std::move(waiting.back());
            waiting.pop_back();
        }
        s_waiting = nullptr;
    }

    [[nodiscard]] std::uint64_t end() const { return first + capacity; }

    // Whether the caller, whose version ends at `position`, is the first to append there. The slot after the last one
    // stands for the next link.
    [[nodiscard]] bool claim(std::uint64_t position)
    {
        auto expected = static_cast<std::size_t>(position - first);
        return claimed.compare_exchange_strong(expected, expected + 1);
    }

    [[nodiscard]] Value const& at(std::uint64_t position) const
    {
        if (unmade && !unmade->isDone.load(std::memory_order_acquire))
            makeElements();
        return elements[static_cast<std::size_t>(position - first)];
    }

    // Elements to look at once: those that are there, or else some that nobody keeps.
    [[nodiscard]] std::vector<Value> const& elementsOr(std::vector<Value>& temporary) const
    {
        if (!unmade || unmade->isDone.load(std::memory_order_acquire))
            return elements;
        std::scoped_lock const lock(unmade->mutex);
        if (unmade->isDone.load(std::memory_order_relaxed))
            return elements;
        temporary = madeElements();
        return temporary;
    }

    struct Unmade {
        explicit Unmade(std::function<std::vector<Value>()> makeElements) : make(std::move(makeElements)) { }

        std::atomic<bool> isDone = false;
        std::mutex mutex;
        std::function<std::vector<Value>()> make;
    };

    std::uint64_t const lineage;
    std::uint64_t const first;
    std::size_t const capacity;
    std::atomic<std::size_t> claimed = 0;
    // As many as the capacity, or none before those of a part are made.
    std::vector<Value> mutable elements;
    std::unique_ptr<Unmade> const unmade;
    std::shared_ptr<Chunk> next;

private:
    [[nodiscard]] std::vector<Value> madeElements() const
    {
        auto made = unmade->make();
        if (made.size() != capacity)
            fatalError("a part of an array made another number of elements than it has");
        return made;
    }

    void makeElements() const
    {
        std::scoped_lock const lock(unmade->mutex);
        if (unmade->isDone.load(std::memory_order_relaxed))
            return;
        elements = madeElements();
        unmade->make = nullptr;
        unmade->isDone.store(true, std::memory_order_release);
    }
};

Value const& Array::Iterator::operator*() const
{
    return m_chunk->at(m_position);
}

Array::Iterator& Array::Iterator::operator++()
{
    ++m_position;
    // The end iterator stays in the last chunk: a newer version on another thread may be linking the next one now.
    if (m_position != m_end && m_position == m_chunk->end())
        m_chunk = m_chunk->next.get();
    return *this;
}

Array::Iterator Array::Iterator::operator++(int)
{
    auto const before = *this;
    ++*this;
    return before;
}

Array::Array(std::initializer_list<Value> elements)
{
    for (auto const& element : elements)
        append(element);
}

Array::Array(std::vector<Value> const& elements) : Array(std::vector<Value>(elements)) { }

Array::Array(std::vector<Value>&& elements)
{
    if (elements.empty())
        return;
    auto const lineage = makeLineage();
    for (auto const& element : elements)
        note(element);
    if (elements.size() <= largestChunk) {
        link(std::make_shared<Chunk>(lineage, 0, std::move(elements)));
        return;
    }
    auto const end = std::move_iterator(elements.end());
    for (auto next = std::move_iterator(elements.begin()); next != end;) {
        auto const last = next + std::min<std::ptrdiff_t>(end - next, largestChunk);
        link(std::make_shared<Chunk>(lineage, m_end, std::vector<Value>(next, last)));
        next = last;
    }
}

Array::Array(std::vector<Part> parts)
{
    auto const lineage = makeLineage();
    for (auto& part : parts) {
        if (part.count == 0)
            continue;
        m_nesting = std::max(m_nesting, part.nesting + 1);
        m_kinds = static_cast<std::uint8_t>(m_kinds | part.kinds);
        link(std::make_shared<Chunk>(lineage, m_end, std::move(part)));
    }
}

void Array::link(std::shared_ptr<Chunk> chunk)
{
    if (m_tail) {
        // Whoever appended here last went on to the next link.
        m_tail->claimed = m_tail->capacity + 1;
        m_tail->next = chunk;
    } else {
        m_head = chunk;
    }
    m_end = chunk->end();
    m_tail = std::move(chunk);
}

Array::Iterator Array::begin() const
{
    return { m_head.get(), m_begin, m_end };
}
Array::Iterator Array::end() const
{
    return { m_tail.get(), m_end, m_end };
}

Value const& Array::at(std::size_t index) const
{
    if (index >= size())
        fatalError("an array was read beyond its end");
    auto const position = m_begin + index;
    // The latest elements are read most often, and often in long arrays.
    auto const* chunk = position >= m_tail->first ? m_tail.get() : m_head.get();
    while (position >= chunk->end())
        chunk = chunk->next.get();
    return chunk->at(position);
}

bool Array::visit(std::function<bool(Value const&)> const& visit) const
{
    auto const* chunk = m_head.get();
    for (auto position = m_begin; position != m_end;) {
        if (position == chunk->end())
            chunk = chunk->next.get();
        std::vector<Value> temporary;
        auto const& elements = chunk->elementsOr(temporary);
        for (auto const end = std::min(m_end, chunk->end()); position != end; ++position) {
            if (!visit(elements[static_cast<std::size_t>(position - chunk->first)]))
                return false;
        }
    }
    return true;
}

void Array::note(Value const& element)
{
    m_nesting = std::max(m_nesting, element.nesting() + 1);
    m_kinds = static_cast<std::uint8_t>(m_kinds | (1U << static_cast<unsigned>(element.kind())));
}

void Array::append(Value element)
{
    note(element);
    if (!m_tail)
        m_head = m_tail = std::make_shared<Chunk>(makeLineage(), m_end, smallestChunk);
    if (!m_tail->claim(m_end)) {
        // Another version has been appended to here already: this one starts a lineage of its own.
        Array copy;
        for (auto const& own : *this)
            copy.append(own);
        copy.append(std::move(element));
        *this = std::move(copy);
        return;
    }
    if (m_end == m_tail->end()) {
        auto const capacity = std::min(m_tail->capacity * 2, largestChunk);
        m_tail->next = std::make_shared<Chunk>(m_tail->lineage, m_end, capacity);
        if (m_begin == m_end)
            m_head = m_tail->next;
        m_tail = m_tail->next;
        m_tail->claimed = 1;
    }
    m_tail->elements[static_cast<std::size_t>(m_end - m_tail->first)] = std::move(element);
    ++m_end;
}

Array Array::appending(Value element) const
{
    auto result = *this;
    result.append(std::move(element));
    return result;
}

Array Array::droppingFirst(std::size_t count) const
{
    auto result = *this;
    result.m_begin += std::min(count, size());
    if (m_tail && result.m_begin >= m_tail->first)
        result.m_head = m_tail;
    while (result.m_head != result.m_tail && result.m_begin >= result.m_head->end())
        result.m_head = result.m_head->next;
    return result;
}

Array Array::prefix(std::size_t count) const
{
    if (count >= size())
        return *this;
    auto result = *this;
    result.m_end = m_begin + count;
    result.m_tail = m_head;
    while (result.m_tail && result.m_end > result.m_tail->end())
        result.m_tail = result.m_tail->next;
    return result;
}

std::optional<Array::Difference> Array::differenceFrom(Array const& older) const
{
    if (!m_tail || !older.m_tail || m_tail->lineage != older.m_tail->lineage)
        return std::nullopt;
    if (m_begin < older.m_begin || m_end < older.m_end)
        return std::nullopt;
    auto const dropped = std::min(m_begin, older.m_end) - older.m_begin;
    auto const firstAppended = std::max(m_begin, older.m_end) - m_begin;
    return Difference { static_cast<std::size_t>(dropped), static_cast<std::size_t>(firstAppended) };
}

bool Array::holdsOnly(Value::Kind kind) const
{
    if ((m_kinds & ~(1U << static_cast<unsigned>(kind))) == 0)
        return true;
    return std::ranges::all_of(begin(), end(), [kind](Value const& element) { return element.kind() == kind; });
}

}
