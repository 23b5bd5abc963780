#include "ZelvoraAdapters/shared/Journal/JournalConnection.h"

#include "ZelvoraAdapters/shared/Journal/JournalCompaction.h"

#include <filesystem>

namespace zelvora::shared {

JournalConnection::JournalConnection(FileOperations& operations, std::string path, std::chrono::milliseconds patience)
    : m_operations(operations)
    , m_path(std::move(path))
    , m_patience(patience)
{
}

std::expected<JournalConnection::Turn, FileFailure> JournalConnection::takeTurn()
{
    if (m_isClosedForGood)
        return std::unexpected(m_lasting);
    if (!m_turns) {
        if (auto opened = openTurns(); !opened) {
            readAtLeast();
            return std::unexpected(opened.error());
        }
    }
    if (auto taken = m_turns->take(); !taken)
        return std::unexpected(taken.error());
    Turn turn { *m_turns };
    if (!m_file || m_turns->changes() != m_seenChanges) {
        if (auto caughtUp = catchUp(); !caughtUp)
            return std::unexpected(caughtUp.error());
    }
    return turn;
}

bool JournalConnection::isCurrent() const
{
    return !m_turns || !m_file || m_turns->changes() == m_seenChanges;
}

void JournalConnection::didChange()
{
    m_turns->countChange();
    m_seenChanges = m_turns->changes();
}

void JournalConnection::replaceFile(std::shared_ptr<JournalFile> file)
{
    m_file = std::move(file);
    m_nameChanged = true;
    didChange();
}

std::expected<void, FileFailure> JournalConnection::openTurns()
{
    auto const directory = std::filesystem::path(m_path).parent_path().string();
    if (auto made = makeDirectories(m_operations, directory); !made)
        return made;
    auto turns = JournalTurns::open(m_operations, m_path + ".lock", m_patience);
    if (!turns)
        return std::unexpected(turns.error());
    m_turns = *std::move(turns);
    return {};
}

std::expected<void, FileFailure> JournalConnection::catchUp()
{
    // Another name's holder says that somebody compacted: the file in hand is history.
    auto caughtUp = m_file && m_file->isAtItsPath() ? m_file->readOn(m_state, m_remarks) : openFileAnew();
    if (!caughtUp)
        return caughtUp;
    m_seenChanges = m_turns->changes();
    return {};
}

std::expected<void, FileFailure> JournalConnection::openFileAnew()
{
    auto opened = JournalFile::open(m_operations, m_path);
    if (!opened) {
        m_isClosedForGood = opened.error().retry == JournalFile::Retry::Never;
        m_lasting = opened.error().failure;
        readAtLeast();
        return std::unexpected(m_lasting);
    }
    m_file = std::move(opened->file);
    m_state = std::move(opened->state);
    m_knowsContents = true;
    // Whoever made or moved it may not have come to syncing the name.
    m_nameChanged = true;
    m_remarks.insert(m_remarks.end(), opened->remarks.begin(), opened->remarks.end());
    removeLeftovers();
    return {};
}

void JournalConnection::readAtLeast()
{
    if (m_knowsContents)
        return;
    auto state = JournalFile::read(m_operations, m_path);
    if (!state)
        return;
    m_state = *std::move(state);
    m_knowsContents = true;
}

void JournalConnection::removeLeftovers()
{
    if (!m_turns->claimCompaction())
        return;
    m_operations.remove(JournalCompaction::pathFor(m_path));
    m_turns->giveUpCompaction();
}

}
