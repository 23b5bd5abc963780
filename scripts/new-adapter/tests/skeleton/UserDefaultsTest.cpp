#include "ZelvoraAdapters/skeleton/Foundation/UserDefaults.h"

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/UserDefaultsContract.h"

namespace zelvora::tests {

namespace {

using skeleton::missing;

class SkeletonStore final {
public:
    platform::UserDefaults& store() { return m_store; }
    void restart() { missing("SkeletonStore::restart"); }
    // Without this, if the platform's own store decides when it writes.
    std::unique_ptr<platform::UserDefaults> openAsAfterDeath() { missing("SkeletonStore::openAsAfterDeath"); }

private:
    skeleton::UserDefaults m_store;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonUserDefaults, UserDefaultsContract, SkeletonStore);

}
