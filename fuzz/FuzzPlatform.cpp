#include "fuzz/FuzzPlatform.h"

#include "fuzz/require.h"

#include <cstdio>
#include <utility>

namespace zelvora::fuzz {

namespace {

class SilentLogger final : public platform::Logger {
public:
    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType) const override { return false; }
    void log(platform::OSLogType, std::string const&) override { }
};

}

void HeldSession::settle(Result const& result)
{
    for (auto& completion : std::exchange(m_waiting, {})) {
        auto shared = std::make_shared<Completion>(std::move(completion));
        m_queue.async([shared, result] { (*shared)(result); });
    }
}

void HeldSession::dataTask(platform::URLRequest, Completion completion)
{
    m_waiting.push_back(std::move(completion));
}

FuzzPlatform::FuzzPlatform() : ForwardingPlatform(std::make_unique<memory::Platform>()) { }

FuzzPlatform& FuzzPlatform::shared()
{
    static auto& s_shared = []() -> FuzzPlatform& {
        require(std::freopen("/dev/null", "w", stdout) != nullptr, "standard output can be discarded");
        auto platform = std::unique_ptr<FuzzPlatform>(new FuzzPlatform);
        auto& installed = *platform;
        platform::Platform::install(std::move(platform));
        return installed;
    }();
    return s_shared;
}

void FuzzPlatform::reset()
{
    m_session.settle(std::unexpected(memory::URLSession::cancelled()));
    runUntilIdle();
    memory().standardUserDefaults().setContents({});
    memory().standardUserDefaults().clearCalls();
}

std::unique_ptr<platform::Logger> FuzzPlatform::makeLogger(std::string const&, std::string const&)
{
    return std::make_unique<SilentLogger>();
}

}
