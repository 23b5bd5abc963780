#pragma once

#include <filesystem>
#include <string>

namespace zelvora::examples {

/// A directory that is gone with the object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;
    ~TemporaryDirectory();

    std::filesystem::path const& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

std::string contentsOf(std::filesystem::path const& file);
void write(std::filesystem::path const& file, std::string const& text);

} // namespace zelvora::examples
