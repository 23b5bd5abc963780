#include "tests/support/TemporaryDirectory.h"

#include "ZelvoraPlatform/fatalError.h"
#include "tests/support/FileBytes.h"

#include <stdlib.h> // NOLINT(*-deprecated-headers): mkdtemp is not in <cstdlib>

#include <system_error>

namespace zelvora::tests {

TemporaryDirectory::TemporaryDirectory()
{
    auto name = (std::filesystem::temp_directory_path() / "zelvora-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        platform::fatalError("no temporary folder could be made");
    m_path = name;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::filesystem::path TemporaryDirectory::write(std::filesystem::path const& relative, std::string const& bytes) const
{
    auto const file = m_path / relative;
    std::filesystem::create_directories(file.parent_path());
    putBytes(file, bytes);
    return file;
}

std::string TemporaryDirectory::read(std::filesystem::path const& relative) const
{
    return bytesOf(m_path / relative);
}

}
