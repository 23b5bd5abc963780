#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// The beginning of a journal file: magic bytes, the version of the format and its complement, a random number that
/// identifies the file, whether the first record is a snapshot, and a checksum. The chain of the records' checksums
/// starts from this one, so that a record of another file is not valid here.
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

    [[nodiscard]] static JournalHeader make(FirstRecord firstRecord);
    [[nodiscard]] std::string encoded() const;

private:
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
