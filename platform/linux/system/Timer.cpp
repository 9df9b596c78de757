#include "platform/Timer.h"

#include <glib.h>

#include <utility>

namespace platform {

struct Timer::Source {
    std::function<void()> function;
    guint number = 0;  // 0 once it has fired
};

Timer::Timer(int milliseconds, std::function<void()> function)
    : mSource(std::make_unique<Source>(Source{std::move(function)})) {
    const auto fire = [](gpointer data) -> gboolean {
        auto* const source = static_cast<Source*>(data);
        source->number = 0;
        std::exchange(source->function, nullptr)();
        return G_SOURCE_REMOVE;
    };
    mSource->number = g_timeout_add(static_cast<guint>(milliseconds), fire, mSource.get());
}

Timer::~Timer() {
    if (mSource->number != 0) g_source_remove(mSource->number);
}

}  // namespace platform
