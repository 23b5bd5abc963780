#include "tests/support/gtk/GtkHarness.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zelvora::tests {

namespace {

using platform::NSLayoutConstraint;
using platform::UIView;

class LayoutTest : public testing::Test {
protected:
    void SetUp() override { m_harness.show(m_controller); }

    UIView& root() { return m_controller->view(); }

    void addPage()
    {
        m_page->setTranslatesAutoresizingMaskIntoConstraints(false);
        root().addSubview(m_page);
        NSLayoutConstraint::activate({ m_page->topAnchor().constraintEqualTo(root().topAnchor()),
            m_page->leadingAnchor().constraintEqualTo(root().leadingAnchor()),
            m_page->trailingAnchor().constraintEqualTo(root().trailingAnchor()) });
    }

    bool isSeenAt(UIView& view, platform::CGRect const& frame)
    {
        return m_harness.runUntil([&] { return m_harness.seenFrame(view) == frame; });
    }

    /// The heights at which the page is seen, until it is seen at the last one.
    std::vector<double> heightsUntil(double last)
    {
        std::vector<double> heights;
        EXPECT_TRUE(m_harness.runUntil([&] {
            auto const height = m_harness.seenFrame(*m_page).height;
            if (heights.empty() || heights.back() != height)
                heights.push_back(height);
            return height == last;
        }));
        return heights;
    }

    GtkHarness m_harness;
    std::shared_ptr<platform::UIViewController> m_controller = std::make_shared<platform::UIViewController>();
    std::shared_ptr<UIView> m_page = std::make_shared<UIView>();
};

}

TEST_F(LayoutTest, AnAnimationPassesThroughTheFramesBetween)
{
    addPage();
    auto const content = m_harness.makeContentView(200);
    content->setTranslatesAutoresizingMaskIntoConstraints(false);
    root().addSubview(content);
    content->bottomAnchor().constraintEqualTo(root().bottomAnchor()).setActive(true);
    auto const whole = m_page->bottomAnchor().constraintEqualTo(root().bottomAnchor());
    auto const shortened = m_page->bottomAnchor().constraintEqualTo(content->topAnchor());
    whole.setActive(true);
    auto const screen = m_harness.screenBounds();
    ASSERT_TRUE(isSeenAt(*m_page, screen));

    whole.setActive(false);
    shortened.setActive(true);
    UIView::animate(0.3, [this] { root().layoutIfNeeded(); });
    auto const heights = heightsUntil(screen.height - 200);
    EXPECT_GT(heights.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(heights, std::greater()));

    // A user who wants no animations sees the end at once.
    g_object_set(gtk_widget_get_settings(GTK_WIDGET(m_harness.window())), "gtk-enable-animations", FALSE, nullptr);
    shortened.setActive(false);
    whole.setActive(true);
    UIView::animate(0.3, [this] { root().layoutIfNeeded(); });
    EXPECT_EQ(heightsUntil(screen.height), (std::vector { screen.height - 200, screen.height }));
}

TEST_F(LayoutTest, LeadingIsOnTheRightInRightToLeftText)
{
    gtk_widget_set_direction(gtk::widgetOf(root()), GTK_TEXT_DIR_RTL);
    auto const content = m_harness.makeContentView(30);
    content->setTranslatesAutoresizingMaskIntoConstraints(false);
    root().addSubview(content);
    NSLayoutConstraint::activate({ content->topAnchor().constraintEqualTo(root().topAnchor()),
        content->leadingAnchor().constraintEqualTo(root().leadingAnchor()) });
    EXPECT_TRUE(isSeenAt(*content, { m_harness.screenBounds().width - 60, 0, 60, 30 }));
}

TEST_F(LayoutTest, TheHeightOfAWrappedTextFollowsFromItsWidth)
{
    auto* label = gtk_label_new("one two three four five six seven eight nine ten eleven twelve thirteen fourteen");
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    m_page = gtk::wrapWidget(label);
    addPage();
    root().layoutIfNeeded();
    int natural = 0;
    int const width = static_cast<int>(m_harness.screenBounds().width);
    gtk_widget_measure(label, GTK_ORIENTATION_VERTICAL, width, nullptr, &natural, nullptr, nullptr);
    EXPECT_TRUE(isSeenAt(*m_page, { 0, 0, static_cast<double>(width), static_cast<double>(natural) }));
    auto const before = natural;
    // It grows with its text without an explicit layout.
    gtk_label_set_text(GTK_LABEL(label), "one\ntwo\nthree\nfour\nfive\nsix");
    gtk_widget_measure(label, GTK_ORIENTATION_VERTICAL, width, nullptr, &natural, nullptr, nullptr);
    ASSERT_GT(natural, before);
    EXPECT_TRUE(isSeenAt(*m_page, { 0, 0, static_cast<double>(width), static_cast<double>(natural) }));
}

TEST_F(LayoutTest, FollowsTheSizeOfTheWindow)
{
    addPage();
    m_page->bottomAnchor().constraintEqualTo(root().safeAreaLayoutGuide().bottomAnchor()).setActive(true);
    auto const screen = m_harness.screenBounds();
    ASSERT_TRUE(isSeenAt(*m_page, { 0, 0, screen.width, screen.height - m_harness.safeBottom() }));
    gtk_window_set_default_size(m_harness.window(), 320, 500);
    EXPECT_TRUE(isSeenAt(*m_page, { 0, 0, 320, 500 - m_harness.safeBottom() }));
    EXPECT_EQ(m_page->bounds(), (platform::CGRect { 0, 0, 320, 500 - m_harness.safeBottom() }));
}

TEST_F(LayoutTest, AConstraintThatContradictsEarlierOnesIsLeftOutAndLogged)
{
    addPage();
    auto const content = m_harness.makeContentView(50);
    content->setTranslatesAutoresizingMaskIntoConstraints(false);
    root().addSubview(content);
    content->bottomAnchor().constraintEqualTo(root().bottomAnchor()).setActive(true);
    m_page->bottomAnchor().constraintEqualTo(root().bottomAnchor()).setActive(true);
    m_page->bottomAnchor().constraintEqualTo(root().topAnchor()).setActive(true);
    std::vector<std::string> warnings;
    auto const record = +[](char const*, GLogLevelFlags, char const* message, gpointer recorded) {
        static_cast<std::vector<std::string>*>(recorded)->emplace_back(message);
    };
    auto const handler = g_log_set_handler("Zelvora", G_LOG_LEVEL_WARNING, record, &warnings);
    EXPECT_TRUE(isSeenAt(*m_page, m_harness.screenBounds()));
    g_log_remove_handler("Zelvora", handler);
    ASSERT_FALSE(warnings.empty());
    EXPECT_EQ(warnings.front(), "Conflicting constraint ignored: root/0.bottom cannot equal root.top: 700 and 0");
}

TEST_F(LayoutTest, AWidgetThatIsWrappedAgainMovesToTheNewView)
{
    auto* label = gtk_label_new("header");
    auto const first = gtk::wrapWidget(label);
    root().addSubview(first);
    auto const second = gtk::wrapWidget(label);
    root().addSubview(second);
    EXPECT_EQ(gtk_widget_get_parent(label), gtk::widgetOf(*second));
    EXPECT_TRUE(m_harness.runUntil([&] { return gtk_widget_get_mapped(label); }));
}

}
