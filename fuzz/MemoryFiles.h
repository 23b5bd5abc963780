#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <map>
#include <string>

namespace zelvora::fuzz {

/// A file system in memory: a few files by their paths.
class MemoryFiles final : public shared::FileOperations {
public:
    std::map<std::string, std::string> files;

    // shared::FileOperations
    int open(std::string const& path, int flags, ::mode_t mode) override;
    ::ssize_t read(int file, char* bytes, std::size_t count, ::off_t offset) override;
    ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset) override;
    int truncate(int file, ::off_t size) override;
    int changeMode(int file, ::mode_t mode) override;
    int sync(int file) override;
    int statusOfFile(int file, struct ::stat& status) override;
    int statusOfPath(std::string const& path, struct ::stat& status) override;
    int rename(std::string const& from, std::string const& to) override;
    int remove(std::string const& path) override;
    int makeDirectory(std::string const& path, ::mode_t mode) override;

private:
    std::map<int, std::string> m_open;
};

}
