#include "ZelvoraAdapters/uikit/Foundation/Clock.h"

#import <Foundation/Foundation.h>

namespace zelvora::uikit {

platform::Date Clock::now() const
{
    @autoreleasepool {
        return { [NSDate date].timeIntervalSince1970 };
    }
}

}
