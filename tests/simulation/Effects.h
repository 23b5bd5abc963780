#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::simulation {

enum class Queue : std::uint8_t { None, Main, Global, Loader };
[[nodiscard]] inline char const* nameOf(Queue queue)
{
    constexpr char const* names[] { "no queue", "the main queue", "the global queue", "the loader's queue" };
    return names[static_cast<std::size_t>(queue)];
}

/// A block that the SDK submitted. Blocks are numbered in order, from 1.
struct Submission {
    Queue queue = Queue::None;
    double delay = 0;
    std::size_t number = 0;
};

/// What the SDK did to the outside during one step, in order, one line of text for each thing: log lines, writes to the
/// preferences, requests, prompts, calls of the host, screens that came and went, scripts that were evaluated, URLs.
/// Submitted blocks are listed apart, because their order among the rest is nobody's business.
class Effects final {
public:
    /// Called before a line is added: brings in what is recorded elsewhere and came first.
    void setSource(std::function<void()> source) { m_source = std::move(source); }

    void add(std::string line)
    {
        if (m_source)
            m_source();
        m_lines.push_back(std::move(line));
    }
    /// For the source itself.
    void append(std::string line) { m_lines.push_back(std::move(line)); }
    void submitted(Submission submission) { m_submissions.push_back(submission); }
    void clear()
    {
        m_lines.clear();
        m_submissions.clear();
    }
    void finish()
    {
        if (m_source)
            m_source();
    }

    [[nodiscard]] std::vector<std::string> const& lines() const { return m_lines; }
    [[nodiscard]] std::vector<Submission> const& submissions() const { return m_submissions; }

private:
    std::function<void()> m_source;
    std::vector<std::string> m_lines;
    std::vector<Submission> m_submissions;
};

}
