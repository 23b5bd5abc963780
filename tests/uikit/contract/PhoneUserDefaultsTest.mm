#include "ZelvoraAdapters/uikit/Foundation/UserDefaults.h"
#include "ZelvoraContract/UserDefaultsContract.h"

#include <memory>

namespace zelvora::tests {

namespace {

class PhoneStore final {
public:
    PhoneStore()
    {
        NSString* domain = [NSProcessInfo processInfo].processName;
        EXPECT_EQ([[NSUserDefaults standardUserDefaults] persistentDomainForName:domain].count, 0U)
            << "Run it with in_new_home.sh.";
    }

    platform::UserDefaults& store() { return *m_store; }
    // Only our side is made anew: GNUstep's file is text, which loses parts of a second and the sign of zero.
    void restart() { m_store = std::make_unique<uikit::UserDefaults>(); }

private:
    std::unique_ptr<uikit::UserDefaults> m_store = std::make_unique<uikit::UserDefaults>();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, UserDefaultsContract, PhoneStore);

}
