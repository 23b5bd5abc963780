// Any file is recovered to a journal that opens again with the same values and takes a new one.

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "fuzz/MemoryFiles.h"
#include "fuzz/require.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

using namespace zelvora;
using shared::JournalFile;
using shared::JournalHeader;

namespace {

constexpr char const* path = "/journal";
constexpr std::chrono::seconds patience { 1 };

// Random bytes hardly ever have the right checksum, so all but the inputs that begin with 0 are payloads of records,
// each behind its length, and are framed here. What is left over is the end of the file as it is.
std::string journal(std::string_view input)
{
    if (input.starts_with('\0'))
        return std::string(input.substr(1));
    shared::ByteReader in { input };
    auto const kind =
        in.byte().value_or(1) % 2 == 0 ? JournalHeader::FirstRecord::Snapshot : JournalHeader::FirstRecord::Change;
    auto const header = JournalHeader::make(kind);
    auto file = header.encoded();
    auto checksum = header.checksum;
    while (auto const payload = in.lengthPrefixed()) {
        std::string record;
        shared::beginRecord(record);
        record += *payload;
        checksum = shared::finishRecord(record, checksum);
        file += record;
    }
    return file += input.substr(input.size() - in.remaining());
}

std::string contentOf(shared::JournalTable const& table)
{
    std::map<std::string, std::string> values;
    for (auto const& [key, entry] : table.snapshot())
        shared::appendValue(values[key], entry.value);
    std::string content;
    for (auto const& [key, bytes] : values) {
        shared::appendLengthPrefixed(content, key);
        shared::appendLengthPrefixed(content, bytes);
    }
    return content;
}

}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    fuzz::MemoryFiles files;
    files.files[path] = journal({ reinterpret_cast<char const*>(bytes), size });
    auto const opened = JournalFile::open(files, path, patience);
    if (!opened) {
        fuzz::require(opened.error().retry == JournalFile::Retry::Never, "only a newer file is refused");
        return 0;
    }
    auto const again = JournalFile::open(files, path, patience);
    fuzz::require(again && contentOf(again->table) == contentOf(opened->table), "a recovered file opens as it is");
    fuzz::require(again->logLines.empty(), "a recovered file needs no recovery");

    std::string record;
    shared::beginRecord(record);
    platform::Value const value = "value";
    (void)shared::appendChange(record, "key", nullptr, &value);
    fuzz::require(again->file->append(record).has_value(), "a recovered file takes a record");
    auto const extended = JournalFile::open(files, path, patience);
    auto const* read = extended ? extended->table.value("key") : nullptr;
    fuzz::require(read && *read == value, "what was appended is read");
    return 0;
}
