#include "ZelvoraAdapters/skeleton/Platform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <iostream>
#include <memory>
#include <optional>
#include <utility>

using zelvora::ZelvoraSDK;
using zelvora::ZelvoraSDKError;

// The SDK on this adapter: it stops with the name of the method that has to be written next.
int main()
{
    constexpr int seconds = 5;
    auto platform = std::make_unique<zelvora::skeleton::Platform>();
    auto& mainQueue = platform->mainQueue();
    zelvora::platform::Platform::install(std::move(platform));

    auto const tell = [](std::optional<ZelvoraSDKError> const& error) {
        if (error)
            std::cout << "initialize reported " << error->code() << std::endl;
    };
    auto const result =
        ZelvoraSDK::shared().initialize("user-key", "api-key", true, false, true, nullptr, nullptr, nullptr, tell);
    if (!result)
        return 1;
    // Other threads ask for the next methods while the main queue runs.
    mainQueue.run(seconds);
    std::cout << "Nothing is missing so far: the SDK asked for nothing more in " << seconds << " s." << std::endl;
}
