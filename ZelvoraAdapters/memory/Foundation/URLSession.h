#pragma once

#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <cstddef>
#include <deque>
#include <expected>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::memory {

/// A loader that sends nothing: it keeps the requests, and the test answers them. A completion runs when `loaderQueue`
/// runs after the answer, or with `cancelled` when the session is destroyed first. Nothing times out on its own: use
/// `fail(timedOut())`. Any thread.
///
/// A parameter `request` is an index into `requests()`; by default it is the oldest request without an answer.
/// Answering a request that does not exist, or one twice, stops the process.
class ZELVORA_API URLSession final : public platform::URLSession {
public:
    /// What a completion receives.
    using Result = std::expected<Answer, platform::Error>;
    /// What answers a request in the test's place.
    using Server = std::function<Result(platform::URLRequest const&)>;

    /// As `request`: the oldest request without an answer.
    static constexpr std::size_t oldest = static_cast<std::size_t>(-1);

    /// The clock is that of the loader's queue, and must outlive the session.
    explicit URLSession(Clock& clock) : m_loaderQueue(clock) { }
    ~URLSession() override;
    URLSession(URLSession const&) = delete;
    URLSession& operator=(URLSession const&) = delete;

    /// Every request so far, in order.
    [[nodiscard]] std::vector<platform::URLRequest> requests() const;
    /// How many requests wait for an answer. One that has it does not count, even if its completion has yet to run.
    [[nodiscard]] std::size_t unansweredCount() const;

    /// Answers the request by a response that arrives whole, with this status and body.
    void answer(int statusCode, std::string body = {}, std::size_t request = oldest);
    /// An answer without a status, as from another protocol.
    void answerNotHTTP(std::string body = {}, std::size_t request = oldest);
    /// Answers the request by an error: no response arrives.
    void fail(platform::Error error, std::size_t request = oldest);
    /// Has each further request answered as it is made, on the thread that makes it. Without a function, as at first,
    /// requests wait for the test.
    void setServer(Server server);

    /// What completions run on; `Platform::runUntilIdle` runs it, too.
    [[nodiscard]] DispatchQueue& loaderQueue() { return m_loaderQueue; }

    /// An error for `fail`, with the phone's code and text.
    /// @{
    [[nodiscard]] static platform::Error cancelled();
    [[nodiscard]] static platform::Error timedOut();
    [[nodiscard]] static platform::Error notConnected();
    /// @}

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    struct DataTask {
        platform::URLRequest request;
        std::optional<Result> result;
        Completion completion;
        bool completed = false;
    };

    void settle(std::size_t request, Result result);
    void complete(DataTask& task);

    std::mutex mutable m_mutex;
    std::deque<DataTask> m_tasks;
    Server m_server;
    DispatchQueue m_loaderQueue;
};

}
