#include "tests/support/gtk/TrackingDialog.h"

#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "ZelvoraPlatform/Platform.h"
#include "tests/support/gtk/GtkHarness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace zelvora::tests {

namespace {

using Status = platform::ATTrackingAuthorizationStatus;

class TrackingDialogTest : public testing::Test {
protected:
    // A variable that is there can change while other threads read the environment; one that is added moves it.
    static void SetUpTestSuite() { setenv("LANGUAGE", "", 0); }

    void SetUp() override
    {
        m_harness.show(std::make_shared<platform::UIViewController>());
        EXPECT_EQ(manager().trackingAuthorizationStatus(), Status::NotDetermined);
    }

    platform::ATTrackingManager& manager() { return platform::Platform::current().trackingManager(); }

    void request()
    {
        manager().requestTrackingAuthorization([this](Status status) { m_answers.push_back(status); });
    }

    /// The dialog that is on the screen.
    GtkWindow* dialog() { return reinterpret_cast<GtkWindow*>(findTrackingDialog()); }

    void answer(int response)
    {
        ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
        clickButton(findTrackingDialog(), response);
        EXPECT_TRUE(m_harness.runUntil([this] { return dialog() == nullptr; }));
    }

    std::string question()
    {
        char* text = nullptr;
        g_object_get(dialog(), "text", &text, nullptr);
        return gtk::GTextPointer(text).get();
    }

    GtkHarness m_harness;
    std::vector<Status> m_answers;
};

GtkWidget* findLabel(GtkWidget* within, std::string const& text)
{
    if (GTK_IS_LABEL(within) && text == gtk_label_get_text(GTK_LABEL(within)))
        return within;
    for (auto* child = gtk_widget_get_first_child(within); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* found = findLabel(child, text))
            return found;
    }
    return nullptr;
}

}

TEST_F(TrackingDialogTest, RemembersThatTheUserAllowedIt)
{
    EXPECT_EQ(platform::Platform::current().identifierManager().advertisingIdentifier(),
        "00000000-0000-0000-0000-000000000000");
    request();
    answer(GTK_RESPONSE_ACCEPT);
    EXPECT_EQ(m_answers, (std::vector { Status::Authorized }));
    EXPECT_EQ(manager().trackingAuthorizationStatus(), Status::Authorized);
    EXPECT_EQ(gtk::TrackingStore(m_harness.directory() / "app").status(), Status::Authorized);
    EXPECT_NE(platform::Platform::current().identifierManager().advertisingIdentifier(),
        "00000000-0000-0000-0000-000000000000");
    // Asked once per install.
    request();
    EXPECT_EQ(m_answers, (std::vector { Status::Authorized, Status::Authorized }));
    EXPECT_FALSE(dialog());
}

TEST_F(TrackingDialogTest, RemembersThatTheUserRefused)
{
    request();
    answer(GTK_RESPONSE_REJECT);
    EXPECT_EQ(m_answers, (std::vector { Status::Denied }));
    EXPECT_EQ(gtk::TrackingStore(m_harness.directory() / "app").status(), Status::Denied);
}

TEST_F(TrackingDialogTest, ClosingTheDialogIsNoAnswer)
{
    request();
    ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
    gtk_window_close(dialog());
    EXPECT_TRUE(m_harness.runUntil([this] { return !m_answers.empty(); }));
    EXPECT_EQ(m_answers, (std::vector { Status::NotDetermined }));
    // The user can be asked again.
    request();
    answer(GTK_RESPONSE_ACCEPT);
    EXPECT_EQ(m_answers.back(), Status::Authorized);
}

TEST_F(TrackingDialogTest, OneDialogAnswersAllRequests)
{
    request();
    request();
    answer(GTK_RESPONSE_ACCEPT);
    EXPECT_EQ(m_answers, (std::vector { Status::Authorized, Status::Authorized }));
}

TEST_F(TrackingDialogTest, ADestroyedWindowTakesTheDialogWithIt)
{
    request();
    ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
    gtk_window_destroy(gtk_window_get_transient_for(dialog()));
    EXPECT_TRUE(m_harness.runUntil([this] { return !m_answers.empty(); }));
    EXPECT_EQ(m_answers, (std::vector { Status::NotDetermined }));
    m_harness.forgetWindow();
}

TEST_F(TrackingDialogTest, AsksInTheUsersLanguageAndNamesTheApp)
{
    setenv("LANGUAGE", "ko", 1);
    request();
    ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
    EXPECT_EQ(question(), "“Contract” 앱이 내 활동을 추적하도록 허용할까요?");
    gtk_window_close(dialog());
    EXPECT_TRUE(m_harness.runUntil([this] { return !dialog(); }));
    setenv("LANGUAGE", "en", 1);
    request();
    ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
    EXPECT_EQ(question(), "Allow “Contract” to track your activity?");
    gtk_window_close(dialog());
    EXPECT_TRUE(m_harness.runUntil([this] { return m_answers.size() == 2; }));
}

TEST_F(TrackingDialogTest, TheQuestionKeepsClearOfTheEdgesAndItsButtonsAreLargeEnoughForFingers)
{
    request();
    ASSERT_TRUE(m_harness.runUntil([this] { return dialog() != nullptr; }));
    auto* const window = GTK_WIDGET(dialog());
    auto* const title = findLabel(window, question());
    ASSERT_TRUE(title);
    ASSERT_TRUE(m_harness.runUntil([title] { return gtk_widget_get_width(title) > 0; }));
    graphene_rect_t bounds;
    ASSERT_TRUE(gtk_widget_compute_bounds(title, window, &bounds));
    EXPECT_GE(bounds.origin.x, 16);
    EXPECT_GE(bounds.origin.y, 16);
    EXPECT_LE(bounds.origin.x + bounds.size.width, static_cast<float>(gtk_widget_get_width(window) - 16));
    for (auto const response : { GTK_RESPONSE_REJECT, GTK_RESPONSE_ACCEPT }) {
        auto* const button = gtk_dialog_get_widget_for_response(findTrackingDialog(), response);
        ASSERT_TRUE(gtk_widget_compute_bounds(button, window, &bounds));
        EXPECT_GE(bounds.size.height, 44);
    }
    answer(GTK_RESPONSE_REJECT);
}

}
