#include "ZelvoraAdapters/skeleton/Foundation/JSONSerialization.h"

#include "ZelvoraContract/JSONSerializationContract.h"

namespace zelvora::tests {

namespace {

class SkeletonJSON final {
public:
    platform::JSONSerialization& json() { return m_json; }

private:
    skeleton::JSONSerialization m_json;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonJSONSerialization, JSONSerializationContract, SkeletonJSON);

}
