#import "tests/uikit/doubles/Calls.h"

#include <cstdio>
#include <cstdlib>

namespace zelvora::doubles {

std::vector<std::string>& calls()
{
    static auto* const s_calls = new std::vector<std::string>;
    return *s_calls;
}

void note(NSString* call)
{
    calls().emplace_back(call.UTF8String);
}

void requireMainThread(char const* call)
{
    if ([NSThread isMainThread])
        return;
    std::fprintf(stderr, "off the main thread: %s\n", call);
    std::abort();
}

}
