#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// What a journal file begins with: a magic text, the version of its format and that version's complement, the file's
/// identity (random, so that no record passes for one of another file), whether its first record is a snapshot, and a
/// checksum, which is also where the chain of the records' checksums starts.
///
/// Magic, version and complement stay where they are in every later format, so that an older program knows a newer
/// file when it sees one.
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

/// What stands where a header should be.
enum class HeaderKind : std::uint8_t {
    Current,
    /// Nothing, or the beginning of one whose writing was interrupted.
    CutShort,
    Newer,
    /// A header of ours with wrong bytes, or somebody else's file.
    Damaged,
};

/// Looks at a file's first bytes, at most `JournalHeader::size` of them. `header` is filled in for `Current`.
[[nodiscard]] HeaderKind readJournalHeader(std::string_view bytes, JournalHeader& header);

}
