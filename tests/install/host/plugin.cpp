#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

// The only function that this library means to export.
extern "C" [[gnu::visibility("default")]] bool hostPluginRuns()
{
    zelvora::memory::install();
    return zelvora::ZelvoraSDK::shared().createWebView() == nullptr;
}
