#pragma once

#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraPlatform/Export.h"

#include <vector>

namespace zelvora::memory {

/// One of the host's own screens, such as the one that the shop is opened from.
class ZELVORA_API ViewController : public platform::UIViewController {
public:
    /// The flags that `viewWillDisappear` was called with.
    [[nodiscard]] std::vector<platform::Animated> const& disappearances() const { return m_disappearances; }

    // platform::UIViewController
    void viewWillDisappear(platform::Animated animated) override;

private:
    std::vector<platform::Animated> m_disappearances;
};

}
