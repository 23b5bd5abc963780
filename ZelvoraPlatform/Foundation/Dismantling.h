#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

namespace zelvora::platform {

/// Destroys nested containers without recursion, however deep a page nested them: a container that is being destroyed
/// passes its elements to `take`, and the outermost call on the thread destroys them all.
class ZELVORA_API Dismantling final {
public:
    /// Takes the value if it is a container, and leaves a null marker.
    static void take(Value& value);
};

}
