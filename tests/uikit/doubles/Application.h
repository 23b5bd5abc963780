#pragma once

#import <UIKit/UIKit.h>

#include <set>
#include <string>
#include <vector>

// The running app. Main thread.
namespace zelvora::doubles {

/// Posts that the app became active where that is new.
void setApplicationState(UIApplicationState state);
/// The schemes, in lower case, for which another app is registered that this one may ask about.
void setOpenableSchemes(std::set<std::string> schemes);
/// What other apps were given, in order.
[[nodiscard]] std::vector<std::string> openedURLs();

}
