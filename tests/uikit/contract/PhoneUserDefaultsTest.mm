#include "ZelvoraAdapters/uikit/Foundation/UserDefaults.h"
#include "tests/contract/UserDefaultsContract.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/uikit/contract/leaveOut.h"

#include <cstdlib>
#include <memory>

namespace zelvora::tests {

namespace {

class PhoneStore final {
public:
    PhoneStore()
    {
        leaveOut({
            { "KeepsEveryKindOfValueUnchanged", "GNUstep's file keeps a date to the second" },
            { "KeepsEveryBitOfANumber", "GNUstep's file is text and loses the sign of zero" },
        });
        // Read when the preferences are first used: each test runs in a process of its own.
        setenv("HOME", m_home.path().c_str(), 1);
        open();
    }

    platform::UserDefaults& store() { return *m_store; }
    void restart()
    {
        [[NSUserDefaults standardUserDefaults] synchronize];
        m_store.reset();
        [NSUserDefaults resetStandardUserDefaults];
        open();
    }

private:
    void open() { m_store = std::make_unique<uikit::UserDefaults>(); }

    TemporaryDirectory m_home;
    std::unique_ptr<uikit::UserDefaults> m_store;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, UserDefaultsContract, PhoneStore);

}
