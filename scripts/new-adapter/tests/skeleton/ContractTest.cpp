#include "tests/contract/ApplicationContract.h"
#include "tests/contract/BundleContract.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/DispatchQueueContract.h"
#include "tests/contract/GestureContract.h"
#include "tests/contract/JSONSerializationContract.h"
#include "tests/contract/LoggerContract.h"
#include "tests/contract/NotificationCenterContract.h"
#include "tests/contract/TrackingContract.h"
#include "tests/contract/URLSessionContract.h"
#include "tests/contract/UserDefaultsContract.h"
#include "tests/contract/ViewContract.h"
#include "tests/contract/ViewControllerContract.h"
#include "tests/contract/WebViewContract.h"
#include "tests/skeleton/Harness.h"

// In the order in which the parts of an adapter are written best: see docs/porting.md.
namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, BundleContract, SkeletonApp);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, LoggerContract, SkeletonLog);
INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonGlobal, DispatchQueueContract, SkeletonGlobalQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonMain, DispatchQueueContract, SkeletonMainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonMain, SerialQueueContract, SkeletonMainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, UserDefaultsContract, SkeletonStore);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, JSONSerializationContract, SkeletonJSON);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, URLSessionContract, SkeletonNetwork);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, ClockContract, SkeletonTime);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, TrackingContract, SkeletonUser);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, ApplicationContract, SkeletonScreen);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, NotificationCenterContract, SkeletonNotificationCenter);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, ViewContract, SkeletonScreen);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, ViewControllerContract, SkeletonScreen);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, GestureContract, SkeletonScreen);
INSTANTIATE_TYPED_TEST_SUITE_P(Skeleton, WebViewContract, SkeletonScreen);

}
