#include "ZelvoraAdapters/shared/Screens/expectFreeScreen.h"

#include "ZelvoraAdapters/shared/Screens/outermost.h"
#include "ZelvoraPlatform/fatalError.h"

namespace zelvora::shared {

using platform::UINavigationController;
using platform::UIViewController;

namespace {

bool isFree(UIViewController const& controller, UIViewController& place, IsShown isShown)
{
    return !controller.navigationController() && &controller != &outermost(place) && !isShown(controller);
}

}

void expectFreeToPresent(UIViewController const* presented, UIViewController& presenter, IsShown isShown)
{
    if (!presented)
        platform::fatalError("no controller was presented");
    if (!isFree(*presented, presenter, isShown))
        platform::fatalError("a controller was presented that is on screen already");
}

void expectFreeToPush(UIViewController const* pushed, UINavigationController& stack, IsShown isShown)
{
    if (!pushed)
        platform::fatalError("no controller was pushed");
    if (!isFree(*pushed, stack, isShown))
        platform::fatalError("a controller was pushed that is on screen already");
}

}
