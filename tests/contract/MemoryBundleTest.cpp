#include "ZelvoraAdapters/memory/Foundation/Bundle.h"
#include "ZelvoraContract/BundleContract.h"

namespace zelvora::tests {

namespace {

class MemoryApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& identifier)
    {
        auto bundle = std::make_unique<memory::Bundle>();
        bundle->setBundleIdentifier(identifier);
        return bundle;
    }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, BundleContract, MemoryApp);

}
