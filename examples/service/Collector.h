#pragma once

#include "examples/service/Http.h"

namespace zelvora::examples {

class CollectorStore;

/// The tracking collector: takes batches of events, and shows what it took to people and to programs.
class Collector final : public Endpoint {
public:
    explicit Collector(CollectorStore& store);

    Reply answer(Request const& request) override;

private:
    Reply collect(Request const& request);
    Reply list() const;

    CollectorStore& m_store;
};

} // namespace zelvora::examples
