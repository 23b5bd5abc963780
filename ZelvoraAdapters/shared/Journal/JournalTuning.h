#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"

#include <chrono>
#include <cstdint>

namespace zelvora::shared {

/// How a preferences journal behaves where a test wants it otherwise than an app does.
struct JournalTuning {
    /// How long after a write the file is synced at the latest.
    std::chrono::milliseconds syncDelay { 1000 };
    /// Below this size a file is never compacted.
    std::uint64_t smallestCompaction = 256UL * 1024;
    /// How long to wait for another process that has its turn.
    std::chrono::milliseconds patience { 3000 };
    /// Outlives the journal.
    FileOperations* operations = &FileOperations::system();
};

}
