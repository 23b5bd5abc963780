#include "ZelvoraAdapters/uikit/Foundation/URLSession.h"
#include "ZelvoraContract/URLSessionContract.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/URLSession.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace zelvora::tests {

namespace {

class PhoneLoader final {
public:
    PhoneLoader()
    {
        doubles::network().setServer([this](doubles::SentRequest const& request) {
            std::scoped_lock const lock(m_mutex);
            auto const& outcome = m_outcomes.at(request.url);
            if (std::holds_alternative<doubles::HTTPAnswer>(outcome))
                m_received.push_back({ request.method, request.headers, request.body });
            return outcome;
        });
    }
    PhoneLoader(PhoneLoader const&) = delete;
    PhoneLoader& operator=(PhoneLoader const&) = delete;
    ~PhoneLoader() { doubles::network().setServer(nullptr); }

    platform::URLSession& session() { return *m_session; }
    void destroySession() { m_session.reset(); }

    platform::URL answering(int status, std::string body) { return add(doubles::HTTPAnswer { status, body }); }
    platform::URL failing(LoaderFailure failure)
    {
        if (failure == LoaderFailure::Silent)
            return add(doubles::NoAnswer {});
        constexpr NSInteger cannotConnect = -1004;
        constexpr NSInteger connectionLost = -1005;
        return add(doubles::LoaderError { failure == LoaderFailure::Refused ? cannotConnect : connectionLost });
    }
    std::vector<ReceivedRequest> received()
    {
        std::scoped_lock const lock(m_mutex);
        return m_received;
    }

    bool runUntil(std::function<bool()> const& done) { return doubles::runMainUntil(done); }
    void changed() { }

private:
    platform::URL add(doubles::Outcome outcome)
    {
        std::scoped_lock const lock(m_mutex);
        auto const url = platform::URL::parse("https://server.test/" + std::to_string(m_outcomes.size()));
        m_outcomes.emplace(url->absoluteString(), std::move(outcome));
        return *url;
    }

    std::mutex m_mutex;
    std::map<std::string, doubles::Outcome> m_outcomes;
    std::vector<ReceivedRequest> m_received;
    std::unique_ptr<uikit::URLSession> m_session = std::make_unique<uikit::URLSession>();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, URLSessionContract, PhoneLoader);

}
