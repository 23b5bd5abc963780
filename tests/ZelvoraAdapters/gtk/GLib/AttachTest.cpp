#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <gtest/gtest.h>

#include <memory>

namespace zelvora::tests {

namespace {

class AttachTest : public testing::Test {
protected:
    void turn() { g_main_context_iteration(m_context.get(), FALSE); }

    gtk::GMainContextPointer m_context { g_main_context_new() };
    std::shared_ptr<int> m_held = std::make_shared<int>(0);
};

}

TEST_F(AttachTest, ABlockIsCalledWheneverItsSourceIsDueUntilTheOwnerLetsGo)
{
    auto source = gtk::attach(g_idle_source_new(), [held = m_held] { ++*held; }, m_context.get());
    EXPECT_EQ(*m_held, 0);
    turn();
    turn();
    EXPECT_EQ(*m_held, 2);
    source.reset();
    EXPECT_EQ(m_held.use_count(), 1);
    turn();
    EXPECT_EQ(*m_held, 2);
}

TEST_F(AttachTest, ABlockMayLetGoOfItsOwnSource)
{
    gtk::GSourcePointer source;
    source = gtk::attach(
        g_idle_source_new(),
        [&source, held = m_held] {
            source.reset();
            ++*held;
        },
        m_context.get());
    turn();
    turn();
    EXPECT_EQ(*m_held, 1);
    EXPECT_EQ(m_held.use_count(), 1);
}

TEST_F(AttachTest, WhatRunsLaterRunsOnceAndKeepsWhatItHoldsUntilThen)
{
    gtk::runLater(g_idle_source_new(), [held = m_held] { ++*held; }, m_context.get());
    EXPECT_EQ(*m_held, 0);
    EXPECT_EQ(m_held.use_count(), 2);
    turn();
    turn();
    EXPECT_EQ(*m_held, 1);
    EXPECT_EQ(m_held.use_count(), 1);
}

TEST_F(AttachTest, WhatWasToRunLaterIsDroppedIfItsSourceIsEnded)
{
    auto* const source = g_idle_source_new();
    gtk::GSourcePointer const ended(g_source_ref(source));
    gtk::runLater(source, [held = m_held] { ++*held; }, m_context.get());
    g_source_destroy(ended.get());
    EXPECT_EQ(m_held.use_count(), 1);
    turn();
    EXPECT_EQ(*m_held, 0);
}

}
