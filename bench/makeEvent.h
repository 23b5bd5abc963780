#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <cstddef>

namespace zelvora::bench {

/// An event as a shop's page saves it.
[[nodiscard]] inline platform::Dictionary makeEvent(std::size_t number)
{
    return { { "eventId", "product_view" }, { "adid", platform::Null {} }, { "productId", "moon-jar" },
        { "price", 89000 }, { "page", "/v1/product.html" }, { "number", number } };
}

}
