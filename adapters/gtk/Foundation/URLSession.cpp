#include "adapters/gtk/Foundation/URLSession.h"

#include "adapters/gtk/Foundation/HTTPUri.h"
#include "adapters/gtk/Foundation/TransportError.h"

#include <utility>

namespace zelvora::gtk {

URLSession::URLSession() : URLSession(Options {}) { }

URLSession::URLSession(Options const& options)
{
    m_thread.queue().async([this, options] { open(options); });
}

URLSession::~URLSession()
{
    m_thread.queue().async([this] { cancelAll(); });
    m_thread.join();
}

void URLSession::dataTask(platform::URLRequest request, Completion completion)
{
    ++m_taskCount;
    m_thread.queue().async([this, request = std::move(request), completion = std::move(completion)]() mutable {
        start(std::move(request), std::move(completion));
    });
}

void URLSession::open(Options const& options)
{
    // Each task has a timeout of its own.
    constexpr guint none = 0;
    m_session.reset(soup_session_new_with_options("timeout", none, nullptr));
    if (options.additionalAuthorities)
        m_trust.emplace(*options.additionalAuthorities);
}

void URLSession::start(platform::URLRequest request, Completion completion)
{
    if (m_isEnding)
        return complete(std::move(completion), std::unexpected(cancelledError()));
    auto uri = parseHTTPUri(request.url.absoluteString());
    if (!uri)
        return complete(std::move(completion), std::unexpected(unsupportedURLError(request.url.absoluteString())));
    auto finish = [this, completion = std::move(completion)](DataTask& task, DataTask::Result result) mutable {
        m_tasks.erase(&task);
        complete(std::move(completion), std::move(result));
    };
    auto task =
        std::make_unique<DataTask>(*m_session, m_trust ? &*m_trust : nullptr, std::move(request), std::move(finish));
    auto& started = *task;
    m_tasks.emplace(&started, std::move(task));
    started.resume(std::move(uri));
}

void URLSession::complete(Completion completion, DataTask::Result result)
{
    completion(std::move(result));
    --m_taskCount;
    if (m_isEnding)
        quitWhenDone();
}

void URLSession::cancelAll()
{
    m_isEnding = true;
    for (auto const& [task, owned] : m_tasks)
        task->cancel();
    quitWhenDone();
}

void URLSession::quitWhenDone()
{
    if (m_taskCount > 0)
        return;
    m_session.reset();
    m_thread.quit();
}

}
