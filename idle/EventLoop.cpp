#include "idle/EventLoop.h"

#include <sys/epoll.h>

#include <csignal>
#include <utility>

#include "idle/Report.h"

namespace {

// Sources take only blocked signals.
void block(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

int stopLoop(sd_event_source* source, const signalfd_siginfo*, void*) {
    return sd_event_exit(sd_event_source_get_event(source), 0);
}

int act(sd_event_source*, int, std::uint32_t, void* action) {
    (*static_cast<std::function<void()>*>(action))();
    return 0;
}

sd_event* newEvent() {
    sd_event* event = nullptr;
    sd_event_new(&event);
    return event;
}

}  // namespace

EventLoop::EventLoop() : mEvent(newEvent()) {
    block({SIGTERM, SIGINT, SIGHUP, SIGCHLD});
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sd_event_add_signal(handle(), nullptr, signal, stopLoop, nullptr);
}

void EventLoop::watch(int descriptor, std::function<void()> action) {
    mActions.push_back(std::move(action));
    sd_event_add_io(handle(), nullptr, descriptor, EPOLLIN, act, &mActions.back());
}

int EventLoop::run() { return sd_event_loop(handle()) == 0 ? 0 : 1; }

void EventLoop::stop() { sd_event_exit(handle(), 0); }

void EventLoop::fail(const std::string& reason) {
    report(reason);
    sd_event_exit(handle(), 1);
}
