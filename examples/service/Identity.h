#pragma once

#include "examples/service/Http.h"

namespace zelvora::examples {

class ShopDirectory;

/// The API base address: takes an app's identity keys and answers with its shop.
class Identity final : public Endpoint {
public:
    explicit Identity(ShopDirectory const& shops);

    Reply answer(Request const& request) override;

private:
    ShopDirectory const& m_shops;
};

} // namespace zelvora::examples
