#include "tests/uikit/doubles/Bundle.h"

#import <Foundation/Foundation.h>

#include <mutex>
#include <utility>

namespace zelvora::doubles {

namespace {

std::mutex s_mutex;
std::optional<std::string> s_identifier;

}

void setBundleIdentifier(std::optional<std::string> identifier)
{
    std::scoped_lock const lock(s_mutex);
    s_identifier = std::move(identifier);
}

}

// GNUstep's own reads it from a file beside the program, so it is replaced.
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation NSBundle (Double)

- (NSString*)bundleIdentifier
{
    std::scoped_lock const lock(zelvora::doubles::s_mutex);
    return zelvora::doubles::s_identifier ? [NSString stringWithUTF8String:zelvora::doubles::s_identifier->c_str()]
                                          : nil;
}

@end
