#include "ZelvoraAdapters/skeleton/Foundation/URLSession.h"

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/URLSessionContract.h"

namespace zelvora::tests {

namespace {

using skeleton::missing;

class SkeletonNetwork final {
public:
    platform::URLSession& session() { return *m_session; }
    void destroySession() { m_session.reset(); }
    platform::URL answering(int, std::string) { missing("SkeletonNetwork::answering"); }
    platform::URL failing(LoaderFailure) { missing("SkeletonNetwork::failing"); }
    std::vector<ReceivedRequest> received() { missing("SkeletonNetwork::received"); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonNetwork::runUntil"); }
    void changed() { }

private:
    std::optional<skeleton::URLSession> m_session { std::in_place };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonURLSession, URLSessionContract, SkeletonNetwork);

}
