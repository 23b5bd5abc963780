#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>

namespace zelvora::shared {

/// Renames what the path names to PATH and the ending, such as ".damaged"; if that exists, a number follows it. Returns
/// the new name.
[[nodiscard]] std::expected<std::string, FileFailure> moveAside(
    FileOperations& operations, std::string const& path, std::string const& ending);

/// Copies the bytes of an open file from an offset to an end into a new file that is named in the same way, and syncs
/// it. Returns its name, or nothing if all the bytes are zero and there is nothing to keep.
[[nodiscard]] std::expected<std::optional<std::string>, FileFailure> copyAside(FileOperations& operations, int file,
    std::string const& path, std::uint64_t begin, std::uint64_t end, std::string const& ending);

}
