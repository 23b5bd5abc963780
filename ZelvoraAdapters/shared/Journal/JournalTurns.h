#pragma once

#include "ZelvoraAdapters/shared/Files/FileDescriptor.h"
#include "ZelvoraAdapters/shared/Files/FileOperations.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>

namespace zelvora::shared {

/// How the journals that are open on one file, in this process and in others of the machine, take turns: a mutex and a
/// count of changes, in memory that they share through a small side file. Taking an uncontended turn costs no system
/// call, which a lock of the file would (two of them cost as much as the write that they guard).
///
/// The memory is made anew by whoever finds nobody else, so nothing in it needs to survive. A process that dies in its
/// turn loses it to the next, and counts as having changed the file. The side file must not be removed while in use.
class JournalTurns final {
public:
    [[nodiscard]] static std::expected<std::unique_ptr<JournalTurns>, FileFailure> open(
        FileOperations& operations, std::string const& path, std::chrono::milliseconds patience);
    ~JournalTurns();
    JournalTurns(JournalTurns const&) = delete;
    JournalTurns& operator=(JournalTurns const&) = delete;

    /// Waits for the turn, but no longer than `patience`, as a process may be stopped in its own, and not at all while
    /// that was the answer the last time. One thread at a time.
    [[nodiscard]] std::expected<void, FileFailure> take();
    void end();

    /// Counts up with every change of the file, by anyone. Any time.
    [[nodiscard]] std::uint64_t changes() const;
    /// In a turn.
    void countChange();

    /// Compaction is for one at a time; a process that dies gives it up. In a turn or out of it.
    [[nodiscard]] bool claimCompaction();
    void giveUpCompaction();

private:
    struct Shared;

    JournalTurns(std::string path, std::chrono::milliseconds patience, FileDescriptor file);
    [[nodiscard]] std::expected<void, FileFailure> enter(FileOperations& operations);
    [[nodiscard]] std::expected<void, FileFailure> map();
    void makeShared();
    [[nodiscard]] bool sharedIsOurs() const;

    std::string m_path;
    std::chrono::milliseconds m_patience;
    FileDescriptor m_file;
    Shared* m_shared = nullptr;
    bool m_hasClaim = false;
    bool m_waitedInVain = false;
};

}
