#include "bench/ArrayQueue.h"

#include "bench/jsonText.h"
#include "bench/makeEvent.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

namespace zelvora::bench {

namespace {

void require(bool succeeded, std::filesystem::path const& file)
{
    if (succeeded)
        return;
    std::fprintf(stderr, "%s could not be read or written.\n", file.c_str());
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

std::string readWhole(std::filesystem::path const& file)
{
    std::string bytes(std::filesystem::file_size(file), '\0');
    std::ifstream in(file, std::ios::binary);
    require(in.read(bytes.data(), static_cast<std::streamsize>(bytes.size())).good(), file);
    return bytes;
}

}

ArrayQueue::ArrayQueue(std::filesystem::path file) : m_file(std::move(file)), m_event(makeEvent(12345))
{
    if (std::filesystem::exists(m_file))
        m_events = *fromText(readWhole(m_file)).array();
}

void ArrayQueue::fill(std::size_t count)
{
    for (std::size_t number = 0; number < count; ++number)
        m_events = m_events.appending(makeEvent(number));
    write();
}

void ArrayQueue::append()
{
    m_events = m_events.appending(m_event);
    write();
}

void ArrayQueue::dropFirst(std::size_t count)
{
    m_events = m_events.droppingFirst(count);
    write();
}

std::vector<platform::Value> ArrayQueue::first(std::size_t count)
{
    auto const events = m_events.prefix(count);
    return { events.begin(), events.end() };
}

void ArrayQueue::write() const
{
    auto newFile = m_file;
    newFile += ".new";
    std::ofstream out(newFile, std::ios::binary);
    out << toText(m_events);
    out.close();
    require(out.good(), newFile);
    std::filesystem::rename(newFile, m_file);
}

}
