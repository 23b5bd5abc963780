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
            { "KeepsEveryBitOfANumber", "GNUstep's file is text and loses the sign of zero" },
            { "KeepsAQueueThatIsReadExtendedDroppedAndWrittenBack",
                "GNUstep's store, read from its file again between writes, may give an older array" },
        });
        // Read when the preferences are first used: each test runs in a process of its own.
        setenv("HOME", m_home.path().c_str(), 1);
        open();
    }

    platform::UserDefaults& store() { return *m_store; }
    // GNUstep's store loses what was written last where one process closes and opens it again within a second, so only
    // our side is made anew: that values survive in the file is not shown here.
    void restart()
    {
        [[NSUserDefaults standardUserDefaults] synchronize];
        m_store.reset();
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
