#pragma once

#include <chrono>
#include <cstdint>

namespace zelvora::shared {

class FileOperations;

/// Whether a journal reads its file before its constructor returns, or on a thread of its own. Then whoever needs a
/// value first waits until it is read.
enum class JournalOpening : std::uint8_t { BeforeReturning, InBackground };

/// How a preferences journal behaves. The defaults are for apps; tests change them.
struct JournalOptions {
    /// The longest time that a write stays unsynced.
    std::chrono::milliseconds syncDelay { 1000 };
    /// In bytes. A smaller file is never compacted.
    std::uint64_t minimumCompactionSize = 256UL * 1024;
    /// How long to wait for the lock while another process or instance holds it.
    std::chrono::milliseconds lockTimeout { 3000 };
    /// How long the lock is kept for further changes, while other processes and instances wait for it.
    std::chrono::microseconds turnLength { 1000 };
    JournalOpening opening = JournalOpening::BeforeReturning;
    /// A test's file system, which must outlive the journal; nullptr is the system's.
    FileOperations* fileOperations = nullptr;
};

}
