#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"

#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <string_view>

namespace zelvora::tests {

namespace {

using internal::serviceAddresses;

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

TEST_F(ServiceAddressesTest, ThePlatformsAddressesAreUsedInPlaceOfThoseCompiledIn)
{
    platform::ServiceAddresses const local { "web.test", "dev.web.test", "https://api.test", "https://dev.api.test",
        "https://lookup.test/", "https://collector.test/" };
    platform.setServiceAddresses(local);
    EXPECT_EQ(serviceAddresses(), local);
}

}

}
