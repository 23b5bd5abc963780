#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace zelvora::tests {

/// The contents of a file; empty if there is none.
[[nodiscard]] inline std::string bytesOf(std::filesystem::path const& file)
{
    std::ifstream in(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(in), {} };
}

/// Creates the file or replaces its contents.
inline void putBytes(std::filesystem::path const& file, std::string const& bytes)
{
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
}

/// In bytes; 0 if there is no file.
[[nodiscard]] inline std::uint64_t sizeOf(std::filesystem::path const& file)
{
    std::error_code error;
    auto const size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

}
