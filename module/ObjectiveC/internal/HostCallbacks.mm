#include "module/ObjectiveC/internal/HostCallbacks.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "module/ObjectiveC/internal/BridgedError.h"

namespace zelvora::module {

ZelvoraSDK::ViewProvider callable(ZelvoraViewProvider provider)
{
    if (!provider)
        return nullptr;
    return
        [provider](platform::UIViewController& container) { return uikit::wrap(provider(uikit::nativeOf(container))); };
}

ZelvoraSDK::CompletionHandler callable(ZelvoraCompletionHandler handler)
{
    if (!handler)
        return nullptr;
    return [handler](std::optional<ZelvoraSDKError> const& error) { handler(bridged(error)); };
}

ZelvoraSDK::PageNavigationHandler callable(ZelvoraPageNavigationHandler handler)
{
    if (!handler)
        return nullptr;
    return [handler](std::string const& url) {
        // A URL's text is UTF-8.
        if (NSString* const text = uikit::stringOf(url))
            handler(text);
    };
}

ZelvoraSDK::CustomAction callableAction(ZelvoraCustomAction action)
{
    if (!action)
        return nullptr;
    return [action](std::optional<std::string> const& data) { action(data ? uikit::stringOf(*data) : nil); };
}

}
