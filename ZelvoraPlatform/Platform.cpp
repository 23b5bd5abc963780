#include "ZelvoraPlatform/Platform.h"

#include "ZelvoraPlatform/fatalError.h"

#include <atomic>

namespace zelvora::platform {

namespace {

// Never destroyed: threads of the system may still call in while the process ends.
std::atomic<Platform*> s_installed = nullptr;

}

void Platform::install(std::unique_ptr<Platform> platform)
{
    Platform* none = nullptr;
    if (!s_installed.compare_exchange_strong(none, platform.get()))
        fatalError("Platform::install was called twice");
    (void)platform.release(); // NOLINT(bugprone-unused-return-value): kept above
}

Platform& Platform::current()
{
    auto* installed = s_installed.load(std::memory_order_acquire);
    if (!installed)
        fatalError("the SDK was used before a platform was installed: call Platform::install first");
    return *installed;
}

}
