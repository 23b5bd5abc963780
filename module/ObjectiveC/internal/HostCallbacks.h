#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#import "module/ObjectiveC/ZelvoraSDK.h"

// The host's blocks as callables of C++; empty for nil. Any thread.
namespace zelvora::module {

[[nodiscard]] ZelvoraSDK::ViewProvider callable(ZelvoraViewProvider provider);
[[nodiscard]] ZelvoraSDK::CompletionHandler callable(ZelvoraCompletionHandler handler);
[[nodiscard]] ZelvoraSDK::PageNavigationHandler callable(ZelvoraPageNavigationHandler handler);
[[nodiscard]] ZelvoraSDK::CustomAction callableAction(ZelvoraCustomAction action);

}
