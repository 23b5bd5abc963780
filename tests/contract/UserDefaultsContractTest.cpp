#include "tests/contract/UserDefaultsContract.h"

#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "tests/support/TemporaryDirectory.h"

#include <optional>

namespace zelvora::tests {

namespace {

class MemoryStore final {
public:
    platform::UserDefaults& store() { return m_store; }
    void restart() { }

private:
    memory::UserDefaults m_store;
};

class JournaledStore final {
public:
    JournaledStore() { open(); }

    platform::UserDefaults& store() { return *m_store; }
    void restart()
    {
        m_store.reset();
        open();
    }

private:
    void open()
    {
        m_store.emplace(m_directory / "preferences", [](std::string const& line) { ADD_FAILURE() << line; });
    }

    TemporaryDirectory m_directory;
    std::optional<shared::JournaledUserDefaults> m_store;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, UserDefaultsContract, MemoryStore);
INSTANTIATE_TYPED_TEST_SUITE_P(Journaled, UserDefaultsContract, JournaledStore);

}
