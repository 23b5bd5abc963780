#include "ZelvoraAdapters/uikit/Foundation/Bundle.h"
#include "ZelvoraContract/BundleContract.h"
#include "tests/uikit/doubles/Bundle.h"

namespace zelvora::tests {

namespace {

class PhoneApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& identifier)
    {
        doubles::setBundleIdentifier(identifier);
        return std::make_unique<uikit::Bundle>();
    }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, BundleContract, PhoneApp);

}
