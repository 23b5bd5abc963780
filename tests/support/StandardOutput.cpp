#include "tests/support/StandardOutput.h"

#include "ZelvoraPlatform/fatalError.h"

#include <unistd.h>

#include <array>
#include <sstream>

namespace zelvora::tests {

StandardOutput::StandardOutput() : m_file(std::tmpfile())
{
    if (!m_file)
        platform::fatalError("no temporary file to catch standard output in");
    std::fflush(stdout);
    m_original = dup(STDOUT_FILENO);
    dup2(fileno(m_file.get()), STDOUT_FILENO);
}

StandardOutput::~StandardOutput()
{
    std::fflush(stdout);
    dup2(m_original, STDOUT_FILENO);
    close(m_original);
}

std::string StandardOutput::text() const
{
    std::fflush(stdout);
    std::string text;
    std::array<char, 4096> block {};
    for (;;) {
        auto const count = pread(fileno(m_file.get()), block.data(), block.size(), static_cast<off_t>(text.size()));
        if (count <= 0)
            return text;
        text.append(block.data(), static_cast<std::size_t>(count));
    }
}

std::vector<std::string> StandardOutput::lines() const
{
    std::istringstream stream(text());
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

}
