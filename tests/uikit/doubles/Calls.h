#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

/// What tests see of the doubles: what was asked of them, and levers for what the system or a user would do.
namespace zelvora::doubles {

/// What the doubles were asked, in order, one short text a call. Main thread.
std::vector<std::string>& calls();
void note(NSString* call);

/// Stops the process if this is not the main thread: the phone's interface is for that one only.
void requireMainThread(char const* call);

}
