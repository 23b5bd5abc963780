#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/JournalState.h"
#include "ZelvoraAdapters/shared/Journal/JournalTurns.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::shared {

/// A journal file that several may be writing, and what it says, as of the last turn. Opens what is not open when a
/// turn is asked for, so that whatever was in the way is tried again with each change. One thread at a time.
class JournalConnection final {
public:
    /// While it lives, the file is this journal's to write.
    class Turn final {
    public:
        explicit Turn(JournalTurns& turns) : m_turns(&turns) { }
        Turn(Turn&& other) noexcept : m_turns(std::exchange(other.m_turns, nullptr)) { }
        Turn& operator=(Turn&&) = delete;
        Turn(Turn const&) = delete;
        Turn& operator=(Turn const&) = delete;
        ~Turn()
        {
            if (m_turns)
                m_turns->end();
        }

    private:
        JournalTurns* m_turns;
    };

    JournalConnection(FileOperations& operations, std::string path, std::chrono::milliseconds patience);

    /// With the state brought up to what others wrote.
    [[nodiscard]] std::expected<Turn, FileFailure> takeTurn();

    /// Whether nobody wrote since the last turn. True where there is no file to look at.
    [[nodiscard]] bool isCurrent() const;
    /// Whether the state is what a file said at some time, and not only empty.
    [[nodiscard]] bool knowsContents() const { return m_knowsContents; }
    [[nodiscard]] JournalState& state() { return m_state; }
    [[nodiscard]] JournalState const& state() const { return m_state; }

    /// The file; after a turn was had, and then until it is replaced by another's compaction.
    [[nodiscard]] std::shared_ptr<JournalFile> const& file() const { return m_file; }
    [[nodiscard]] JournalTurns& turns() { return *m_turns; }

    /// In a turn: tells the others that there is something to read.
    void didChange();
    /// In a turn: goes on with a file that says the same and has the other's name now.
    void replaceFile(std::shared_ptr<JournalFile> file);

    /// Whether the file's name was made or changed since this was last asked.
    [[nodiscard]] bool takeNameChange() { return std::exchange(m_nameChanged, false); }
    void noteNameChange() { m_nameChanged = true; }
    [[nodiscard]] std::vector<std::string> takeRemarks() { return std::exchange(m_remarks, {}); }
    [[nodiscard]] bool hasRemarks() const { return !m_remarks.empty(); }

private:
    [[nodiscard]] std::expected<void, FileFailure> openTurns();
    [[nodiscard]] std::expected<void, FileFailure> catchUp();
    [[nodiscard]] std::expected<void, FileFailure> openFileAnew();
    void readAtLeast();
    void removeLeftovers();

    FileOperations& m_operations;
    std::string m_path;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<JournalTurns> m_turns;
    std::shared_ptr<JournalFile> m_file;
    JournalState m_state;
    std::uint64_t m_seenChanges = 0;
    std::vector<std::string> m_remarks;
    FileFailure m_lasting;
    bool m_isClosedForGood = false;
    bool m_knowsContents = false;
    bool m_nameChanged = false;
};

}
