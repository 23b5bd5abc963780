#pragma once

#include "examples/service/Http.h"

namespace zelvora::examples {

class ShopDirectory;

/// Tells which shop belongs to an API key.
class Lookup final : public Endpoint {
public:
    explicit Lookup(ShopDirectory const& shops);

    Reply answer(Request const& request) override;

private:
    ShopDirectory const& m_shops;
};

} // namespace zelvora::examples
