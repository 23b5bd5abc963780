#include "ZelvoraAdapters/skeleton/Foundation/Bundle.h"

#include "ZelvoraContract/BundleContract.h"

namespace zelvora::tests {

namespace {

class SkeletonApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& /*identifier*/)
    {
        return std::make_unique<skeleton::Bundle>();
    }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonBundle, BundleContract, SkeletonApp);

}
