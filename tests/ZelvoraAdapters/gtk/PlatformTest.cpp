#include "ZelvoraPlatform/Platform.h"

#include "tests/support/gtk/GtkHarness.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gtest/gtest.h>
#include <link.h>

#include <atomic>
#include <fstream>
#include <set>

namespace zelvora::tests {

namespace {

std::set<std::string> loadedLibraries()
{
    std::set<std::string> libraries;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* found) {
            static_cast<std::set<std::string>*>(found)->insert(info->dlpi_name);
            return 0;
        },
        &libraries);
    return libraries;
}

bool isModule(std::string const& library)
{
    return library.find("/gio/modules/") != std::string::npos;
}

}

TEST(PlatformTest, TheLoaderNeedsNoModuleThatWasNotLoadedAtTheStart)
{
    std::filesystem::path authorityFile;
    GtkHarness harness([&](gtk::HostOptions& options) {
        std::filesystem::create_directories(options.dataDirectory);
        authorityFile = options.certificateAuthorityFile = options.dataDirectory / "authority.pem";
        std::ofstream(authorityFile) << TestAuthority().certificatePEM();
    });
    auto const before = loadedLibraries();

    LoopbackServer server(TestAuthority().identityOf("localhost"));
    server.serve("/", [](SoupServerMessage* message) { answer(message, 200, "secret"); });
    std::atomic<bool> isAnswered = false;
    platform::Platform::current().urlSession().dataTask(
        { .url = server.url("/") }, [&](auto const& answer) { isAnswered = answer.has_value(); });
    EXPECT_TRUE(harness.runUntil([&] { return isAnswered.load(); }));
    for (auto const& library : loadedLibraries()) {
        if (isModule(library)) {
            EXPECT_TRUE(before.contains(library)) << library;
        }
    }
}

}
