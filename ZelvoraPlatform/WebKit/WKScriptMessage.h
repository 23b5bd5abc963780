#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <string>

namespace zelvora::platform {

/// What a page posted: the handler's name, and the object with its types kept. A boolean stays a boolean; members that
/// are undefined are left out.
struct WKScriptMessage {
    /// The name that the handler was added under.
    std::string name;
    /// Any value, a bare null marker and a number that is not finite included. A message that has too many values or
    /// nests too deep for the adapter is dropped.
    Value body;

    bool operator==(WKScriptMessage const&) const = default;
};

/// Receives the messages that pages post to the name under which it was added. Main thread, in the order of posting.
class ZELVORA_API WKScriptMessageHandler {
public:
    virtual ~WKScriptMessageHandler() = default;

    /// A page, or a frame in it, has posted a message.
    virtual void didReceiveScriptMessage(WKScriptMessage const& message) = 0;
};

}
