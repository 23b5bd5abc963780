#include "ZelvoraAdapters/gtk/Concurrency/ContextThread.h"

namespace zelvora::gtk {

ContextThread::ContextThread()
    : m_context(g_main_context_new())
    , m_loop(g_main_loop_new(m_context.get(), FALSE))
    , m_queue(m_context.get())
    , m_thread([this] { run(); })
{
}

ContextThread::~ContextThread()
{
    if (!m_thread.joinable())
        return;
    // Quits on the thread itself: quitting a loop that does not run yet has no effect.
    m_queue.async([this] { quit(); });
    join();
}

void ContextThread::quit()
{
    g_main_loop_quit(m_loop.get());
}

void ContextThread::join()
{
    m_thread.join();
}

void ContextThread::run()
{
    g_main_context_push_thread_default(m_context.get());
    g_main_loop_run(m_loop.get());
    g_main_context_pop_thread_default(m_context.get());
}

}
