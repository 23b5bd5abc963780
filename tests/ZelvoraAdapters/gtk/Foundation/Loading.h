#pragma once

#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"

#include <chrono>
#include <expected>
#include <future>
#include <memory>
#include <thread>

namespace zelvora::tests {

/// A loader that waits for its requests.
class Loading final {
public:
    using Result = std::expected<platform::URLSession::Answer, platform::Error>;

    Loading() = default;
    explicit Loading(gtk::URLSession::Options const& options) : m_session(options) { }

    /// Waits for the completion. If it is not called within a minute, the result is an error of the domain "test".
    Result load(platform::URLRequest request)
    {
        auto promise = std::make_shared<std::promise<Result>>();
        auto result = promise->get_future();
        m_session.dataTask(std::move(request), [this, promise](Result completed) {
            m_thread = std::this_thread::get_id();
            promise->set_value(std::move(completed));
        });
        if (result.wait_for(std::chrono::minutes(1)) != std::future_status::ready)
            return std::unexpected(platform::Error { "test", 0, "the completion was not called" });
        return result.get();
    }

    [[nodiscard]] gtk::URLSession& session() { return m_session; }
    /// The thread on which the last completion was called.
    [[nodiscard]] std::thread::id thread() const { return m_thread; }

private:
    std::thread::id m_thread;
    gtk::URLSession m_session;
};

}
