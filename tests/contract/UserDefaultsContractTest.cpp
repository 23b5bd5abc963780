#include "ZelvoraContract/UserDefaultsContract.h"

#include "ZelvoraAdapters/memory/ForwardingUserDefaults.h"
#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "tests/support/TemporaryDirectory.h"

#include <memory>

namespace zelvora::tests {

namespace {

class MemoryStore final {
public:
    platform::UserDefaults& store() { return m_store; }
    void restart() { }

private:
    memory::UserDefaults m_store;
};

class ForwardedStore final {
public:
    platform::UserDefaults& store() { return m_store; }
    void restart() { }

private:
    memory::UserDefaults m_target;
    memory::ForwardingUserDefaults m_store { m_target };
};

class JournaledStore final {
public:
    platform::UserDefaults& store() { return *m_store; }
    void restart()
    {
        m_store.reset();
        m_store = open();
    }
    std::unique_ptr<platform::UserDefaults> openAsAfterDeath() { return open(); }

private:
    std::unique_ptr<shared::JournaledUserDefaults> open() const
    {
        return std::make_unique<shared::JournaledUserDefaults>(
            m_directory / "preferences", [](std::string const& line) { ADD_FAILURE() << line; });
    }

    TemporaryDirectory m_directory;
    std::unique_ptr<shared::JournaledUserDefaults> m_store = open();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, UserDefaultsContract, MemoryStore);
INSTANTIATE_TYPED_TEST_SUITE_P(Forwarded, UserDefaultsContract, ForwardedStore);
INSTANTIATE_TYPED_TEST_SUITE_P(Journaled, UserDefaultsContract, JournaledStore);

}
