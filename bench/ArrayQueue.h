#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "bench/EventQueue.h"

#include <filesystem>

namespace zelvora::bench {

/// A reference for the journal: one array in memory, which every change writes whole, as JSON text, to a new file that
/// replaces the old one.
class ArrayQueue final : public EventQueue {
public:
    explicit ArrayQueue(std::filesystem::path file);

    // EventQueue
    void fill(std::size_t count) override;
    void append() override;
    void dropFirst(std::size_t count) override;
    [[nodiscard]] std::size_t size() override { return m_events.size(); }
    [[nodiscard]] std::vector<platform::Value> first(std::size_t count) override;

private:
    void write() const;

    std::filesystem::path m_file;
    platform::Array m_events;
    platform::Value m_event;
};

}
