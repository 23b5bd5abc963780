#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace zelvora::tests {

/// A new folder, removed with its contents at the end.
class TemporaryDirectory final {
public:
    TemporaryDirectory()
    {
        auto name = (std::filesystem::temp_directory_path() / "zelvora-test-XXXXXX").string();
        if (!mkdtemp(name.data()))
            std::abort();
        m_path = name;
    }
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return m_path; }

    [[nodiscard]] std::filesystem::path write(std::string const& name, std::string const& text) const
    {
        std::ofstream(m_path / name, std::ios::binary) << text;
        return m_path / name;
    }
    [[nodiscard]] std::string read(std::string const& name) const
    {
        std::ostringstream text;
        text << std::ifstream(m_path / name, std::ios::binary).rdbuf();
        return text.str();
    }

private:
    std::filesystem::path m_path;
};

}
