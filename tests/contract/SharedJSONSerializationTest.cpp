#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraContract/JSONSerializationContract.h"

namespace zelvora::tests {

namespace {

// The reader and writer that both adapters use.
class SharedJSON final {
public:
    platform::JSONSerialization& json() { return m_json; }

private:
    shared::JSONSerialization m_json;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Shared, JSONSerializationContract, SharedJSON);

}
