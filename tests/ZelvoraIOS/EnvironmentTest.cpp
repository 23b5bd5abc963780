#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"

#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"

namespace zelvora::tests {

namespace {

using internal::serviceAddresses;

class EnvironmentTest : public SDKTest { };

TEST_F(EnvironmentTest, InitializeInProductionPicksTheProductionAddresses)
{
    EXPECT_TRUE(initialize({ .isDev = false }));
    EXPECT_EQ(ZelvoraSDKInspector::properties().webURL, serviceAddresses().productionWebHost + "/v1");
    EXPECT_EQ(ZelvoraSDKInspector::properties().apiURL, serviceAddresses().productionApiBase);
    EXPECT_TRUE(ZelvoraSDKInspector::properties().apiURL->starts_with("https://"));
    EXPECT_EQ(ZelvoraSDKInspector::properties().webURL->find("://"), std::string::npos);
}

TEST_F(EnvironmentTest, InitializeInDevelopmentPicksTheDevelopmentAddresses)
{
    EXPECT_TRUE(initialize({ .isDev = true }));
    EXPECT_EQ(ZelvoraSDKInspector::properties().webURL, serviceAddresses().developmentWebHost + "/v1");
    EXPECT_EQ(ZelvoraSDKInspector::properties().apiURL, serviceAddresses().developmentApiBase);
    EXPECT_TRUE(ZelvoraSDKInspector::properties().apiURL->starts_with("https://"));
    EXPECT_EQ(ZelvoraSDKInspector::properties().webURL->find("://"), std::string::npos);
    EXPECT_TRUE(ZelvoraSDKInspector::properties().webURL->ends_with("/v1"));
}

TEST_F(EnvironmentTest, TheEnvironmentsDifferAndTheDefaultsAreUnderAReservedTopLevelDomain)
{
    auto const addresses = serviceAddresses();
    EXPECT_NE(addresses.productionWebHost, addresses.developmentWebHost);
    EXPECT_NE(addresses.productionApiBase, addresses.developmentApiBase);
    EXPECT_TRUE(addresses.productionWebHost.ends_with(".example"));
    EXPECT_TRUE(addresses.developmentWebHost.ends_with(".example"));
    EXPECT_TRUE(addresses.productionApiBase.ends_with(".example"));
    EXPECT_TRUE(addresses.developmentApiBase.ends_with(".example"));
}

TEST_F(EnvironmentTest, EachApiBaseIsThatOfItsEnvironment)
{
    EXPECT_EQ(serviceAddresses().productionApiBase, "https://api.zelvora.example");
    EXPECT_EQ(serviceAddresses().developmentApiBase, "https://api-dev.zelvora.example");
}

TEST_F(EnvironmentTest, RequestsNameProductionPrdAndDevelopmentDev)
{
    EXPECT_EQ(internal::profile(false), "prd");
    EXPECT_EQ(internal::profile(true), "dev");
}

}

}
