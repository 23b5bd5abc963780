#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

namespace zelvora::platform {

/// Destroys containers in containers without recursion, however deep a page nested them: a container that is being
/// destroyed gives its elements here, and the outermost call on the thread destroys what has come in.
class ZELVORA_API Dismantling final {
public:
    static void take(Value& value);
};

}
