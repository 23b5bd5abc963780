#include "ZelvoraAdapters/memory/Foundation/URLSession.h"

#include "ZelvoraPlatform/fatalError.h"

#include <algorithm>
#include <utility>

namespace zelvora::memory {

URLSession::~URLSession()
{
    // By index, because a completion may make another request.
    std::size_t settled = 0;
    while (settled < m_tasks.size()) {
        auto& task = m_tasks[settled++];
        if (!task.result)
            task.result = std::unexpected(cancelled());
        complete(task);
    }
}

std::vector<platform::URLRequest> URLSession::requests() const
{
    std::scoped_lock const lock(m_mutex);
    std::vector<platform::URLRequest> requests;
    requests.reserve(m_tasks.size());
    for (auto const& task : m_tasks)
        requests.push_back(task.request);
    return requests;
}

std::size_t URLSession::unansweredCount() const
{
    std::scoped_lock const lock(m_mutex);
    return static_cast<std::size_t>(std::ranges::count_if(m_tasks, [](auto const& task) { return !task.result; }));
}

void URLSession::answer(int statusCode, std::string body, std::size_t request)
{
    settle(request, Answer { { std::move(body) }, { statusCode } });
}

void URLSession::answerNotHTTP(std::string body, std::size_t request)
{
    settle(request, Answer { { std::move(body) }, {} });
}

void URLSession::fail(platform::Error error, std::size_t request)
{
    settle(request, std::unexpected(std::move(error)));
}

platform::Error URLSession::cancelled()
{
    return { "NSURLErrorDomain", -999, "cancelled" };
}

platform::Error URLSession::timedOut()
{
    return { "NSURLErrorDomain", -1001, "The request timed out." };
}

platform::Error URLSession::notConnected()
{
    return { "NSURLErrorDomain", -1009, "The Internet connection appears to be offline." };
}

void URLSession::dataTask(platform::URLRequest request, Completion completion)
{
    Server server;
    std::size_t number = 0;
    {
        std::scoped_lock const lock(m_mutex);
        server = m_server;
        number = m_tasks.size();
        m_tasks.push_back({ request, std::nullopt, std::move(completion) });
    }
    if (server)
        settle(number, server(request));
}

void URLSession::setServer(Server server)
{
    std::scoped_lock const lock(m_mutex);
    m_server = std::move(server);
}

void URLSession::settle(std::size_t request, Result result)
{
    std::scoped_lock const lock(m_mutex);
    auto const isUnanswered = [](auto const& task) { return !task.result; };
    auto const task = request == oldest
        ? std::ranges::find_if(m_tasks, isUnanswered)
        : m_tasks.begin() + static_cast<std::ptrdiff_t>(std::min(request, m_tasks.size()));
    if (task == m_tasks.end() || task->result)
        platform::fatalError("a request was answered that was never made or has its answer");
    task->result = std::move(result);
    // Elements of a deque keep their addresses while others are appended.
    m_loaderQueue.async([this, answered = &*task] { complete(*answered); });
}

void URLSession::complete(DataTask& task)
{
    if (!std::exchange(task.completed, true))
        task.completion(*std::move(task.result));
}

}
