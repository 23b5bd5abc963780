#pragma once

#include "ZelvoraAdapters/uikit/Concurrency/PendingCompletions.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <atomic>
#include <memory>

namespace zelvora::uikit {

/// The system's shared loader. It does not limit the size of a response, and it is the system's transport security that
/// refuses what is not encrypted, redirections included.
class URLSession final : public platform::URLSession {
public:
    URLSession() = default;
    URLSession(URLSession const&) = delete;
    URLSession& operator=(URLSession const&) = delete;
    ~URLSession() override;

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    using Result = std::expected<Answer, platform::Error>;

    std::shared_ptr<PendingCompletions<Result>> m_pending = std::make_shared<PendingCompletions<Result>>();
    std::atomic<bool> m_isEnding = false;
};

}
