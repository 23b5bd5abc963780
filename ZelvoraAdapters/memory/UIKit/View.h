#pragma once

#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::memory {

/// A view of the host's own, such as a header, with the size that its content has.
class ZELVORA_API View : public platform::UIView {
public:
    explicit View(IntrinsicSize size = {}) { peer().setIntrinsicSize(size); }

    [[nodiscard]] UIViewPeer& peer() const { return memory::peer(*this); }
};

}
