#pragma once

#include "bench/EventQueue.h"
#include "bench/SQLiteStore.h"

#include <filesystem>
#include <string>

namespace zelvora::bench {

/// A reference for the journal: a row for each event, which holds its JSON text.
class SQLiteQueue final : public EventQueue {
public:
    explicit SQLiteQueue(std::filesystem::path const& file);

    // EventQueue
    void fill(std::size_t count) override;
    void append() override { m_store.append(m_event); }
    void dropFirst(std::size_t count) override { m_store.dropFirst(count); }
    [[nodiscard]] std::size_t size() override { return m_store.size(); }
    [[nodiscard]] std::vector<platform::Value> first(std::size_t count) override;

private:
    SQLiteStore m_store;
    std::string m_event;
};

}
