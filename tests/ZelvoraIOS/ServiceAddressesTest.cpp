#include "ZelvoraIOS/ZelvoraSDK/serviceAddresses.h"

#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <string_view>

namespace zelvora::tests {

namespace {

class ServiceAddressesTest : public SDKTest { };

TEST_F(ServiceAddressesTest, TheWebHostsHaveNeitherSchemeNorPath)
{
    auto const addresses = serviceAddresses();
    for (std::string_view const host : { addresses.productionWebHost, addresses.developmentWebHost }) {
        EXPECT_FALSE(host.empty());
        EXPECT_EQ(host.find('/'), std::string_view::npos) << host;
    }
}

TEST_F(ServiceAddressesTest, TheApiBasesAreHttpsAddressesWithoutAPath)
{
    auto const addresses = serviceAddresses();
    for (std::string_view base : { addresses.productionApiBase, addresses.developmentApiBase }) {
        ASSERT_TRUE(base.starts_with("https://")) << base;
        base.remove_prefix(std::string_view("https://").size());
        EXPECT_FALSE(base.empty());
        EXPECT_EQ(base.find('/'), std::string_view::npos) << base;
    }
}

TEST_F(ServiceAddressesTest, TheLookupEndpointIsAnHttpsUrlWithThePathSlash)
{
    auto const endpoint = serviceAddresses().lookupEndpoint;
    ASSERT_TRUE(endpoint.starts_with("https://")) << endpoint;
    EXPECT_EQ(endpoint.find('/', std::string_view("https://").size()), endpoint.size() - 1) << endpoint;
}

TEST_F(ServiceAddressesTest, TheTrackingEndpointIsAnHttpsUrl)
{
    auto const endpoint = serviceAddresses().trackingEndpoint;
    EXPECT_TRUE(endpoint.starts_with("https://")) << endpoint;
    EXPECT_TRUE(platform::URL::parse(endpoint));
}

TEST_F(ServiceAddressesTest, TheEnvironmentsDifferAndTheDefaultsAreUnderAReservedTopLevelDomain)
{
    auto const addresses = serviceAddresses();
    EXPECT_NE(addresses.productionWebHost, addresses.developmentWebHost);
    EXPECT_NE(addresses.productionApiBase, addresses.developmentApiBase);
    EXPECT_TRUE(addresses.productionWebHost.ends_with(".example"));
    EXPECT_TRUE(addresses.developmentWebHost.ends_with(".example"));
    EXPECT_TRUE(addresses.productionApiBase.ends_with(".example"));
    EXPECT_TRUE(addresses.developmentApiBase.ends_with(".example"));
}

TEST_F(ServiceAddressesTest, EachApiBaseIsThatOfItsEnvironment)
{
    EXPECT_EQ(serviceAddresses().productionApiBase, "https://api.zelvora.example");
    EXPECT_EQ(serviceAddresses().developmentApiBase, "https://api-dev.zelvora.example");
}

TEST_F(ServiceAddressesTest, ThePlatformsAddressesAreUsedInPlaceOfThoseCompiledIn)
{
    platform::ServiceAddresses const local { "web.test", "dev.web.test", "https://api.test", "https://dev.api.test",
        "https://lookup.test/", "https://collector.test/" };
    platform.setServiceAddresses(local);
    EXPECT_EQ(serviceAddresses(), local);
}

}

}
