#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// The beginning of a journal file: magic bytes, the version of the format and its complement, a number that identifies
/// the file, whether the first record is a snapshot, and a checksum. The chain of the records' checksums starts from
/// this one, so that a record of another file is not valid here.
///
/// The upper half of the identity is random. The lower half counts the files that replaced one another, so that a
/// journal whose file was replaced can tell its successor from a file that somebody else put there.
///
/// Every later format must keep magic, version and complement in their places, so that an older program recognizes a
/// newer file.
struct JournalHeader {
    static constexpr std::size_t size = 32;
    static constexpr std::uint32_t currentVersion = 1;

    enum class FirstRecord : std::uint32_t { Change, Snapshot };

    std::uint64_t identity = 0;
    FirstRecord firstRecord = FirstRecord::Change;
    std::uint32_t checksum = 0;

    /// The header of a new file, or of the successor of one.
    [[nodiscard]] static JournalHeader make(FirstRecord firstRecord);
    [[nodiscard]] static JournalHeader makeSuccessor(JournalHeader const& before, FirstRecord firstRecord);
    /// Whether this is a successor of that file, or of its successor, and so on.
    [[nodiscard]] bool isSuccessorOf(JournalHeader const& before) const;
    [[nodiscard]] std::string encoded() const;

private:
    [[nodiscard]] static JournalHeader makeWith(std::uint64_t identity, FirstRecord firstRecord);
    [[nodiscard]] std::string encodedWithoutChecksum() const;
};

/// What a file begins with.
enum class HeaderKind : std::uint8_t {
    Current,
    /// Nothing, or part of a header: its write was interrupted.
    Incomplete,
    /// A header of a newer format.
    Newer,
    /// A damaged header, or a file that is not a journal.
    Damaged,
};

/// Parses the first bytes of a file, at most `JournalHeader::size`. Sets `header` only for `Current`.
[[nodiscard]] HeaderKind readJournalHeader(std::string_view bytes, JournalHeader& header);

}
