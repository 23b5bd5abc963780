#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <string>

namespace zelvora::platform {

/// What a page posted: the handler's name, and the object with its types kept (a boolean is a boolean, undefined
/// members are gone).
struct WKScriptMessage {
    std::string name;
    Value body;

    bool operator==(WKScriptMessage const&) const = default;
};

/// Is told of the messages that pages post to the name that it was registered under. Main thread, in the order of
/// posting.
class ZELVORA_API WKScriptMessageHandler {
public:
    virtual ~WKScriptMessageHandler() = default;

    virtual void didReceiveScriptMessage(WKScriptMessage const& message) = 0;
};

}
