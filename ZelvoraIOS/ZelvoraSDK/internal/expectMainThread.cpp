#include "ZelvoraIOS/ZelvoraSDK/internal/expectMainThread.h"

#include "ZelvoraPlatform/Platform.h"

#include <string>

namespace zelvora::internal {

void expectMainThread(char const* function)
{
    auto& platform = platform::Platform::current();
    if (!platform.isMainThread())
        platform.complain(std::string("ZelvoraSDK::") + function + " was called off the main thread.");
}

}
