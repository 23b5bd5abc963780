#pragma once

#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "bench/EventQueue.h"

#include <filesystem>

namespace zelvora::bench {

/// This project's way: an array in the preferences, of which the journal writes what was dropped and appended.
class JournalQueue final : public EventQueue {
public:
    explicit JournalQueue(std::filesystem::path const& file);

    /// Appends an event and returns by how many bytes the file has grown, which a lower bound has to write, too.
    [[nodiscard]] std::size_t bytesOfAppending();

    // EventQueue
    void fill(std::size_t count) override;
    void append() override;
    void dropFirst(std::size_t count) override;
    [[nodiscard]] std::size_t size() override { return read().size(); }
    [[nodiscard]] std::vector<platform::Value> first(std::size_t count) override;

private:
    [[nodiscard]] platform::Array read();
    void write(platform::Array events);

    std::filesystem::path m_file;
    shared::JournaledUserDefaults m_preferences;
    platform::Value m_event;
};

}
