#include "ZelvoraAdapters/uikit/Foundation/JSONSerialization.h"
#include "ZelvoraContract/JSONSerializationContract.h"
#include "tests/uikit/contract/leaveOut.h"

namespace zelvora::tests {

namespace {

class PhoneJSON final {
public:
    PhoneJSON() { leaveOut({ { "RefusesWhatIsNotJSON", "GNUstep's reader takes some of it" } }); }

    platform::JSONSerialization& json() { return m_json; }

private:
    uikit::JSONSerialization m_json;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, JSONSerializationContract, PhoneJSON);

}
