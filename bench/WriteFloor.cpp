#include "bench/WriteFloor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zelvora::bench {

WriteFloor::WriteFloor(std::filesystem::path const& file, std::size_t bytes)
    : m_descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600))
    , m_bytes(bytes, 'x')
{
}

WriteFloor::~WriteFloor()
{
    close(m_descriptor);
}

void WriteFloor::operator()() const
{
    if (write(m_descriptor, m_bytes.data(), m_bytes.size()) == static_cast<ssize_t>(m_bytes.size()))
        return;
    std::perror("the reference write failed");
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

}
