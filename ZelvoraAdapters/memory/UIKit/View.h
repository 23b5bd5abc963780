#pragma once

#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::memory {

/// One of the host's own views, such as a header, with the size of its content.
class ZELVORA_API View : public platform::UIView {
public:
    /// A view whose content has this size.
    explicit View(IntrinsicSize size = {}) { peer().setIntrinsicSize(size); }

    /// Its native side, which says where the view is and what it was told.
    [[nodiscard]] UIViewPeer& peer() const { return memory::peer(*this); }
};

}
