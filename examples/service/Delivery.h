#pragma once

#include "examples/service/Faults.h"

#include <libsoup/soup.h>

#include <chrono>
#include <optional>

namespace zelvora::examples {

/// A reply, and how its delivery goes wrong.
struct Outcome {
    Reply reply;
    std::chrono::milliseconds delay { 0 };
    std::optional<Cut> cut = std::nullopt;
};

/// Sends the outcome to the client: at once, late, in part, or not at all. Call it on the thread whose default main
/// context serves the message.
void deliver(SoupServerMessage* message, Outcome outcome);

}
