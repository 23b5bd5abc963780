#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "tests/support/gtk/GtkHarness.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

namespace {

using Lines = std::vector<std::string>;

/// The adapter's warnings, as of the construction.
class Warnings final {
public:
    Warnings() : m_handler(g_log_set_handler("Zelvora", G_LOG_LEVEL_WARNING, record, &m_lines)) { }
    Warnings(Warnings const&) = delete;
    Warnings& operator=(Warnings const&) = delete;
    ~Warnings() { g_log_remove_handler("Zelvora", m_handler); }

    [[nodiscard]] Lines const& lines() const { return m_lines; }

private:
    static void record(char const*, GLogLevelFlags, char const* message, gpointer lines)
    {
        static_cast<Lines*>(lines)->emplace_back(message);
    }

    Lines m_lines;
    guint m_handler;
};

class WrongUseTest : public ::testing::Test {
protected:
    std::shared_ptr<ZelvoraIOSViewController> showContainer()
    {
        auto container = std::make_shared<ZelvoraIOSViewController>("about:blank");
        (void)container->view();
        return container;
    }

    GtkHarness m_harness;
    Warnings m_warnings;
};

constexpr char const* hiddenWindow = "A screen was put into a window that is not shown: call gtk_window_present";
constexpr char const* shownElsewhere =
    "A header or footer is in another view, which loses it. Return a new view for each container.";

}

TEST_F(WrongUseTest, NoWidgetIsNoView)
{
    EXPECT_EQ(gtk::wrapWidget(nullptr), nullptr);
    EXPECT_EQ(gtk::wrapScreen(nullptr), nullptr);
    EXPECT_EQ(
        m_warnings.lines(), (Lines { "gtk::wrapWidget was given no widget", "gtk::wrapScreen was given no widget" }));
}

TEST_F(WrongUseTest, NoWindowIsNoPresenter)
{
    EXPECT_EQ(gtk::wrapWindow(nullptr), nullptr);
    EXPECT_EQ(m_warnings.lines(), (Lines { "gtk::wrapWindow was given no window" }));
}

TEST_F(WrongUseTest, NoControllerIsNoStackAndNoContentOfAWindow)
{
    EXPECT_EQ(gtk::makeNavigationController(nullptr), nullptr);
    gtk::setRootViewController(m_harness.window(), nullptr);
    gtk::setRootViewController(nullptr, gtk::wrapScreen(gtk_label_new("home")));
    EXPECT_EQ(m_warnings.lines(),
        (Lines { "gtk::makeNavigationController was given no controller",
            "gtk::setRootViewController was given no controller", "gtk::setRootViewController was given no window" }));
}

TEST_F(WrongUseTest, AScreenThatHasAPlaceIsNeitherPushedNorPresented)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto const home = gtk::wrapScreen(gtk_label_new("home"));
    auto const stack = gtk::makeNavigationController(home);
    auto const window = gtk::wrapWindow(m_harness.window());
    auto const pushedOnScreen = "Fatal error: a controller was pushed that is on screen already";
    EXPECT_DEATH(stack->pushViewController(nullptr, platform::Animated::No), "Fatal error: no controller was pushed");
    EXPECT_DEATH(stack->pushViewController(home, platform::Animated::No), pushedOnScreen);
    EXPECT_DEATH((void)gtk::makeNavigationController(home), pushedOnScreen);
    EXPECT_DEATH(window->present(nullptr, platform::Animated::No), "Fatal error: no controller was presented");
    EXPECT_DEATH(window->present(home, platform::Animated::No),
        "Fatal error: a controller was presented that is on screen already");
}

TEST_F(WrongUseTest, APresenterThatPresentsAlreadyPresentsNothingElse)
{
    m_harness.show(gtk::wrapScreen(gtk_label_new("home")));
    auto const window = gtk::wrapWindow(m_harness.window());
    auto const screen = gtk::wrapScreen(gtk_label_new("screen"));
    window->present(screen, platform::Animated::No);
    window->present(screen, platform::Animated::No);
    EXPECT_EQ(m_warnings.lines(), (Lines { "Presentation ignored: the presenter is covered or presents already" }));
}

TEST_F(WrongUseTest, AWidgetIsTakenFromTheViewThatShowsItWithAWarning)
{
    auto* const label = gtk_label_new("header");
    auto const first = gtk::wrapWidget(label);
    EXPECT_EQ(m_warnings.lines(), Lines {});
    auto const second = gtk::wrapWidget(label);
    EXPECT_EQ(m_warnings.lines(),
        (Lines { "A GtkLabel is in another view, which loses it: make a new widget for each view" }));
}

TEST_F(WrongUseTest, AWidgetThatTheHostHasPlacedItselfIsTakenWithoutAWarning)
{
    auto* const label = gtk_label_new("home");
    gtk_window_set_child(m_harness.window(), label);
    auto const screen = gtk::wrapScreen(label);
    EXPECT_EQ(m_warnings.lines(), Lines {});
}

TEST_F(WrongUseTest, AHeaderThatAnotherContainerShowsIsTakenFromThereWithAWarning)
{
    auto const header = gtk::wrapWidget(gtk_label_new("header"));
    ZelvoraSDK::shared().setHeaderViewProvider([header](auto&) { return header; });
    auto const first = showContainer();
    EXPECT_EQ(m_warnings.lines(), Lines {});
    auto const second = showContainer();
    EXPECT_EQ(m_warnings.lines(), (Lines { shownElsewhere }));
}

TEST_F(WrongUseTest, ACallOffTheMainThreadIsWarnedOf)
{
    ZelvoraSDK::shared().setFooterVisible(false);
    EXPECT_EQ(m_warnings.lines(), Lines {});
    std::thread([] { ZelvoraSDK::shared().setFooterVisible(true); }).join();
    EXPECT_EQ(m_warnings.lines(), (Lines { "ZelvoraSDK::setFooterVisible was called off the main thread." }));
}

TEST_F(WrongUseTest, AStartBeforeInitializeIsWarnedOf)
{
    EXPECT_FALSE(ZelvoraSDK::shared().start(gtk::wrapWindow(m_harness.window())));
    EXPECT_EQ(m_warnings.lines(), (Lines { "ZelvoraSDK::start was called before initialize." }));
}

TEST_F(WrongUseTest, AScreenInAWindowThatWasNeverShownIsWarnedOf)
{
    auto* const window = GTK_WINDOW(gtk_window_new());
    auto const stack = gtk::makeNavigationController(gtk::wrapScreen(gtk_label_new("home")));
    gtk::setRootViewController(window, stack);
    EXPECT_EQ(m_warnings.lines(), Lines {});
    stack->pushViewController(gtk::wrapScreen(gtk_label_new("pushed")), platform::Animated::No);
    EXPECT_EQ(m_warnings.lines(), (Lines { hiddenWindow }));
    gtk::wrapWindow(window)->present(gtk::wrapScreen(gtk_label_new("presented")), platform::Animated::No);
    EXPECT_EQ(m_warnings.lines(), (Lines { hiddenWindow, hiddenWindow }));
    gtk_window_destroy(window);
}

TEST_F(WrongUseTest, AScreenInAWindowThatIsShownIsNotWarnedOf)
{
    auto const stack = gtk::makeNavigationController(gtk::wrapScreen(gtk_label_new("home")));
    m_harness.show(stack);
    stack->pushViewController(gtk::wrapScreen(gtk_label_new("pushed")), platform::Animated::No);
    stack->present(gtk::wrapScreen(gtk_label_new("presented")), platform::Animated::No);
    EXPECT_EQ(m_warnings.lines(), Lines {});
}

namespace {

struct Certificates {
    explicit Certificates(gtk::HostOptions& options)
    {
        std::filesystem::create_directories(options.dataDirectory);
        broken = options.dataDirectory / "broken.pem";
        missing = options.dataDirectory / "missing.pem";
        auto const sound = options.dataDirectory / "sound.pem";
        std::ofstream(broken) << "no certificate";
        std::ofstream(sound) << TestAuthority().certificatePEM();
        options.certificateAuthorityFile = broken;
        options.trustedCertificates = { { "shop.example", missing }, { "mall.example", sound } };
    }
    std::filesystem::path broken;
    std::filesystem::path missing;
};

}

TEST(WrongUseAtInstallTest, CertificatesThatCannotBeReadAreNamed)
{
    Warnings const warnings;
    std::optional<Certificates> files;
    GtkHarness const harness([&](gtk::HostOptions& options) { files.emplace(options); });
    ASSERT_EQ(warnings.lines().size(), 2u);
    EXPECT_TRUE(warnings.lines()[0].starts_with("HostOptions::certificateAuthorityFile: " + files->broken.string()
        + " could not be read, so the servers that it is for are not trusted: "))
        << warnings.lines()[0];
    EXPECT_TRUE(warnings.lines()[1].starts_with("HostOptions::trustedCertificates, shop.example: "
        + files->missing.string() + " could not be read, so the servers that it is for are not trusted: "))
        << warnings.lines()[1];
}

}
