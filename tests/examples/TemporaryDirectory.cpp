#include "tests/examples/TemporaryDirectory.h"

#include "examples/service/Handles.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zelvora::examples {

TemporaryDirectory::TemporaryDirectory()
{
    GlibText const path(g_dir_make_tmp("zelvora-service-XXXXXX", nullptr));
    if (!path)
        throw std::runtime_error("no temporary directory");
    m_path = path.get();
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string contentsOf(std::filesystem::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

void write(std::filesystem::path const& file, std::string const& text)
{
    std::ofstream(file, std::ios::binary) << text;
}

} // namespace zelvora::examples
