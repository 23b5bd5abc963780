#pragma once

#include <filesystem>
#include <string>

namespace zelvora::tests {

/// A new, empty folder for one test, removed with its contents on destruction. Stops the process if none can be made.
class TemporaryDirectory final {
public:
    TemporaryDirectory();
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;
    ~TemporaryDirectory();

    [[nodiscard]] std::filesystem::path const& path() const { return m_path; }
    [[nodiscard]] std::filesystem::path operator/(std::filesystem::path const& relative) const
    {
        return m_path / relative;
    }

    /// Creates or replaces a file, with the folders above it, and returns its path.
    std::filesystem::path write(std::filesystem::path const& relative, std::string const& bytes) const;
    /// The contents of a file; empty if there is none.
    [[nodiscard]] std::string read(std::filesystem::path const& relative) const;

private:
    std::filesystem::path m_path;
};

}
