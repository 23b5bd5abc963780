#include "ZelvoraAdapters/skeleton/Platform.h"

#include "ZelvoraContract/PlatformContract.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace zelvora::tests {

namespace {

class SkeletonPlatform final {
public:
    SkeletonPlatform()
    {
        auto platform = std::make_unique<skeleton::Platform>();
        m_mainQueue = &platform->mainQueue();
        platform::Platform::install(std::move(platform));
    }

    bool runUntil(std::function<bool()> const& done)
    {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!done() && std::chrono::steady_clock::now() < deadline)
            m_mainQueue->run(0.001);
        return done();
    }

private:
    // The installed platform's, which is never destroyed.
    skeleton::MainQueue* m_mainQueue = nullptr;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonPlatform, PlatformContract, SkeletonPlatform);

}
