#pragma once

#include <stdlib.h> // NOLINT(*-deprecated-headers): mkdtemp is not in <cstdlib>

#include <filesystem>
#include <string>

namespace zelvora::tests {

/// A new directory that goes away with this object.
class TemporaryDirectory final {
public:
    TemporaryDirectory()
    {
        auto name = (std::filesystem::temp_directory_path() / "zelvora-XXXXXX").string();
        m_path = ::mkdtemp(name.data());
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;

    [[nodiscard]] std::string path() const { return m_path; }
    [[nodiscard]] std::string operator/(std::string const& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

}
