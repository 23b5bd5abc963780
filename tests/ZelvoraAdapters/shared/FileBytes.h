#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace zelvora::tests {

[[nodiscard]] inline std::string bytesOf(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(in), {} };
}

inline void putBytes(std::string const& path, std::string const& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

/// 0 where there is no file.
[[nodiscard]] inline std::uint64_t sizeOf(std::string const& path)
{
    std::error_code error;
    auto const size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

}
