#pragma once

#include "examples/service/Router.h"

#include <libsoup/soup.h>

namespace zelvora::examples {

/// Sends the outcome to the client: at once, late, in part, or not at all.
/// On the thread whose default main context serves the message.
void deliver(SoupServerMessage* message, Outcome outcome);

} // namespace zelvora::examples
