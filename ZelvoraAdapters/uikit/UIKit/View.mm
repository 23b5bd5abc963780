#include "ZelvoraAdapters/uikit/UIKit/View.h"

#include "ZelvoraAdapters/uikit/UIKit/UIViewPeer.h"

namespace zelvora::uikit {

std::shared_ptr<platform::UIView> View::of(::UIView* native)
{
    if (auto owner = Bond<platform::UIView, ::UIView>::ownerOf(native))
        return owner;
    return std::shared_ptr<View>(new View(native));
}

View::View(::UIView* native) : platform::UIView(std::make_unique<UIViewPeer>(*this, native)) { }

}
