#pragma once

#include "examples/service/Http.h"

namespace zelvora::examples {

class CollectorStore;
class Faults;

/// Takes the orders of tests and people: what goes wrong, and when to start over.
[[nodiscard]] Reply answerControl(Faults& faults, CollectorStore& store, Request const& request);

}
