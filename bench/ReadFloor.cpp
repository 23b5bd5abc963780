#include "bench/ReadFloor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace zelvora::bench {

ReadFloor::ReadFloor(std::filesystem::path file)
    : m_file(std::move(file))
    , m_bytes(std::filesystem::file_size(m_file), '\0')
{
}

void ReadFloor::operator()()
{
    auto const descriptor = open(m_file.c_str(), O_RDONLY | O_CLOEXEC);
    auto const count = read(descriptor, m_bytes.data(), m_bytes.size());
    close(descriptor);
    if (count == static_cast<ssize_t>(m_bytes.size()))
        return;
    std::perror("the reference read failed");
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

}
