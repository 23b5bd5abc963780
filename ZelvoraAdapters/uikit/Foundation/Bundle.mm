#include "ZelvoraAdapters/uikit/Foundation/Bundle.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#import <Foundation/Foundation.h>

namespace zelvora::uikit {

std::optional<std::string> Bundle::bundleIdentifier() const
{
    @autoreleasepool {
        NSString* identifier = [NSBundle mainBundle].bundleIdentifier;
        return identifier ? std::optional(textOf(identifier)) : std::nullopt;
    }
}

}
