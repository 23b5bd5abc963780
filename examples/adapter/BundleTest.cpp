#include "ZelvoraAdapters/abacus/Foundation/Bundle.h"

#include "ZelvoraContract/BundleContract.h"

namespace zelvora::tests {

namespace {

class AbacusApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& identifier)
    {
        return std::make_unique<abacus::Bundle>(identifier);
    }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(AbacusBundle, BundleContract, AbacusApp);

}
