#include "ZelvoraAdapters/uikit/Tracking/ASIdentifierManager.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#import <AdSupport/AdSupport.h>

using NativeIdentifierManager = ASIdentifierManager;

namespace zelvora::uikit {

std::string ASIdentifierManager::advertisingIdentifier() const
{
    @autoreleasepool {
        return textOf([NativeIdentifierManager sharedManager].advertisingIdentifier.UUIDString);
    }
}

}
