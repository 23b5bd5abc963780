#include "ZelvoraAdapters/uikit/Foundation/Errors.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

namespace zelvora::uikit {

platform::Error errorOf(NSError* error)
{
    if (!error)
        return { "ZelvoraSDK", 0, "The system gave no reason." };
    return { textOf(error.domain), static_cast<int>(error.code), textOf(error.localizedDescription) };
}

}
