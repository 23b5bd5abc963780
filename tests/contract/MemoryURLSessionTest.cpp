#include "ZelvoraAdapters/memory/Foundation/URLSession.h"
#include "ZelvoraContract/URLSessionContract.h"
#include "ZelvoraContract/support/recorded.h"

#include <mutex>
#include <optional>
#include <variant>

namespace zelvora::tests {

namespace {

class MemoryURLSession final {
public:
    platform::URLSession& session() { return *m_session; }
    void destroySession() { m_session.reset(); }

    platform::URL answering(int status, std::string body) { return add(Reply { status, std::move(body) }); }
    platform::URL failing(LoaderFailure failure)
    {
        return add(
            failure == LoaderFailure::Silent ? memory::URLSession::timedOut() : memory::URLSession::notConnected());
    }

    std::vector<ReceivedRequest> received()
    {
        std::vector<ReceivedRequest> received;
        for (auto const& request : m_session->requests())
            received.push_back(receivedRequest(request));
        return received;
    }

    bool runUntil(std::function<bool()> const& done)
    {
        while (!done()) {
            if (m_session->unansweredCount() == 0 && m_session->loaderQueue().isEmpty())
                return false;
            while (m_session->unansweredCount() > 0)
                settleNext();
            m_session->loaderQueue().runAll();
        }
        return true;
    }
    void changed() { }

private:
    struct Reply {
        int status;
        std::string body;
    };
    using Script = std::variant<Reply, platform::Error>;

    platform::URL add(Script script)
    {
        auto const url = platform::URL::parse("https://server.test/" + std::to_string(m_scripts.size()));
        m_scripts.emplace(url->absoluteString(), std::move(script));
        return *url;
    }

    void settleNext()
    {
        auto const& script = m_scripts.at(m_session->requests().at(m_settledCount++).url.absoluteString());
        if (auto const* const reply = std::get_if<Reply>(&script))
            m_session->answer(reply->status, reply->body);
        else
            m_session->fail(std::get<platform::Error>(script));
    }

    memory::Clock m_clock;
    std::map<std::string, Script> m_scripts;
    std::size_t m_settledCount = 0;
    std::optional<memory::URLSession> m_session { std::in_place, m_clock };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, URLSessionContract, MemoryURLSession);

}
