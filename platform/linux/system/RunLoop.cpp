#include "platform/RunLoop.h"

#include <glib.h>

namespace platform {

namespace {

constexpr int kMaxPumped = 16;  // sources that are always ready must not keep the caller forever

bool stopping = false;

}  // namespace

void RunLoop::run() {
    runUntil([] { return false; });
}

void RunLoop::runUntil(const std::function<bool()>& done) {
    while (!stopping && !done()) g_main_context_iteration(nullptr, true);
}

bool RunLoop::runUntil(const std::function<bool()>& done, int milliseconds) {
    bool isDone = false;
    finish([&] { return stopping || (isDone = done()); }, milliseconds);
    return isDone;
}

bool RunLoop::finish(const std::function<bool()>& done, int milliseconds) {
    bool isLate = false, isDone = false;
    const auto end = [](gpointer flag) -> gboolean { return *static_cast<bool*>(flag) = true; };
    const guint timer =
        g_timeout_add_full(G_PRIORITY_HIGH, static_cast<guint>(milliseconds), end, &isLate, nullptr);
    while (!isLate && !(isDone = done())) g_main_context_iteration(nullptr, true);
    g_source_remove(timer);
    return isDone;
}

void RunLoop::runFor(int milliseconds) {
    runUntil([] { return false; }, milliseconds);
}

void RunLoop::pump() {
    for (int i = 0; i < kMaxPumped && !stopping && g_main_context_iteration(nullptr, false); ++i) {
    }
}

void RunLoop::stop() {
    stopping = true;
    g_main_context_wakeup(nullptr);
}

bool RunLoop::isStopping() { return stopping; }

}  // namespace platform
