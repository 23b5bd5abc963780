#pragma once

#include "examples/service/Http.h"

namespace zelvora::examples {

class CollectorStore;
class Faults;

/// Where tests and people tell the service to fail, and to be well again.
class Control final : public Endpoint {
public:
    Control(Faults& faults, CollectorStore& store);

    Reply answer(Request const& request) override;

private:
    Reply setFault(Request const& request);
    Reply reset(Request const& request);

    Faults& m_faults;
    CollectorStore& m_store;
};

} // namespace zelvora::examples
