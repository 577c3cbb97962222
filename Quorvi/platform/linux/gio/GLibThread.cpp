#include "Quorvi/platform/linux/gio/GLibThread.h"

#include <glib.h>
#include <pthread.h>

#include <chrono>
#include <utility>

namespace quorvi {

GLibThread::GLibThread(const char* name, std::function<void()> begin, std::function<void()> end)
    : context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)) {
    thread_ =
        std::thread([this, begin = std::move(begin), end = std::move(end)] { run(begin, end); });
    pthread_setname_np(thread_.native_handle(), name);
}

GLibThread::~GLibThread() {
    // Quit from inside the loop: a loop that has not started yet would miss the call.
    invoke([this] { g_main_loop_quit(loop_.get()); });
    thread_.join();
}

void GLibThread::run(const std::function<void()>& begin, const std::function<void()>& end) {
    g_main_context_push_thread_default(context_.get());
    begin();
    g_main_loop_run(loop_.get());
    end();
    while (g_main_context_iteration(context_.get(), FALSE)) continue;
    g_main_context_pop_thread_default(context_.get());
}

void GLibThread::invoke(std::function<void()> work, Duration delay) {
    struct Call {
        GMainLoop* loop;
        std::function<void()> work;
    };
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay).count();
    const GLibHandle<GSource> source(milliseconds == 0
                                         ? g_idle_source_new()
                                         : g_timeout_source_new(static_cast<guint>(milliseconds)));
    g_source_set_callback(
        source.get(),
        [](gpointer data) -> gboolean {
            const auto& call = *static_cast<Call*>(data);
            if (g_main_loop_is_running(call.loop)) call.work();
            return G_SOURCE_REMOVE;
        },
        new Call{loop_.get(), std::move(work)},
        [](gpointer data) { delete static_cast<Call*>(data); });
    g_source_attach(source.get(), context_.get());
}

}  // namespace quorvi
