#pragma once

#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "tests/ZelvoraAdapters/shared/Journal/TestFileOperations.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

/// A journal in a directory of its own, on a file system that can be made to fail.
class JournalTest : public testing::Test {
protected:
    JournalTest()
    {
        m_options.fileOperations = &m_operations;
        // The background threads do nothing unless a test changes these.
        m_options.syncDelay = std::chrono::hours(1);
        m_options.minimumCompactionSize = std::uint64_t { 1 } << 40U;
    }

    void open() { m_store = make(); }
    void close() { m_store.reset(); }
    void restart()
    {
        close();
        open();
    }
    [[nodiscard]] std::unique_ptr<shared::JournaledUserDefaults> make()
    {
        return std::make_unique<shared::JournaledUserDefaults>(
            m_path, [this](std::string const& line) { m_log.add(line); }, m_options);
    }

    void set(std::string const& key, platform::Value value) { m_store->setObject(std::move(value), key); }
    void remove(std::string const& key) { m_store->removeObject(key); }
    [[nodiscard]] std::optional<platform::Value> get(std::string const& key) { return m_store->object(key); }
    [[nodiscard]] platform::Array array(std::string const& key)
    {
        auto const value = get(key);
        return value && value->array() ? *value->array() : platform::Array {};
    }
    void append(std::string const& key, platform::Value element) { set(key, array(key).appending(std::move(element))); }

    [[nodiscard]] std::vector<std::string> log() const { return m_log.all(); }
    [[nodiscard]] std::uint64_t fileSize() const { return sizeOf(m_path); }

    /// Writes a file with three records. Returns where each begins and where the last one ends.
    std::vector<std::uint64_t> writeThreeRecords()
    {
        std::vector<std::uint64_t> offsets;
        open();
        for (auto const* key : { "one", "two", "three" }) {
            offsets.push_back(fileSize());
            set(key, key);
        }
        offsets.push_back(fileSize());
        close();
        return offsets;
    }

    void truncateTo(std::uint64_t size) { std::filesystem::resize_file(m_path, size); }

    TemporaryDirectory m_directory;
    std::string m_path = m_directory / "preferences";
    TestFileOperations m_operations;
    shared::JournalOptions m_options;
    Record<std::string> m_log;
    std::unique_ptr<shared::JournaledUserDefaults> m_store;
};

}
