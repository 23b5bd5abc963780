#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"

#include "ZelvoraAdapters/gtk/Foundation/HTTPUri.h"
#include "ZelvoraAdapters/gtk/Foundation/TransportError.h"

#include <memory>
#include <utility>
#include <vector>

namespace zelvora::gtk {

namespace {

/// How long the destructor waits for libsoup to release cancelled tasks. Those that it keeps longer are abandoned with
/// the thread's context.
constexpr platform::TimeInterval patience = 1;

}

URLSession::URLSession() : URLSession(Options {}) { }

URLSession::URLSession(Options const& options)
{
    m_thread.queue().async([this, options] { open(options); });
}

URLSession::~URLSession()
{
    m_thread.queue().async([this] { endAll(); });
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
    // Each task has its own timeout.
    constexpr guint none = 0;
    m_session.reset(soup_session_new_with_options("timeout", none, nullptr));
    // It lets damaged bodies through; `ResponseBody` does not.
    soup_session_remove_feature_by_type(m_session.get(), SOUP_TYPE_CONTENT_DECODER);
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
    auto finish = [this, completion = std::move(completion)](
                      DataTask::Result result) mutable { complete(std::move(completion), std::move(result)); };
    auto gone = [this](DataTask& task) {
        m_tasks.erase(&task);
        quitWhenDone();
    };
    auto const task = std::make_shared<DataTask>(
        *m_session, m_trust ? &*m_trust : nullptr, std::move(request), std::move(finish), std::move(gone));
    m_tasks.insert(task.get());
    task->resume(std::move(uri));
}

void URLSession::complete(Completion completion, DataTask::Result result)
{
    completion(std::move(result));
    --m_taskCount;
    quitWhenDone();
}

void URLSession::endAll()
{
    m_isEnding = true;
    m_patience.emplace([this] { quit(); });
    m_patience->set(patience);
    std::vector<std::shared_ptr<DataTask>> tasks;
    tasks.reserve(m_tasks.size());
    for (auto* const task : m_tasks)
        tasks.push_back(task->shared_from_this());
    for (auto const& task : tasks)
        task->fail(cancelledError());
    quitWhenDone();
}

void URLSession::quitWhenDone()
{
    if (m_isEnding && m_taskCount == 0 && m_tasks.empty())
        quit();
}

void URLSession::quit()
{
    m_patience.reset();
    m_session.reset();
    m_thread.quit();
}

}
