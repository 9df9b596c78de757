#include "idle/X11Idle.h"

#include <X11/extensions/scrnsaver.h>

#include <algorithm>

#include "idle/X11Screen.h"
#include "platform/linux/KeyboardGrab.h"

namespace {

constexpr std::chrono::milliseconds kPaceWithSaver{100};
constexpr std::chrono::milliseconds kPaceWithoutSaver{1000};

bool hasExtension(Display* display) {
    int event, error;
    return XScreenSaverQueryExtension(display, &event, &error);
}

// Windows of other programs may go at any time.
int ignoreError(Display*, XErrorEvent*) { return 0; }

}  // namespace

std::unique_ptr<IdleSource> X11Idle::open(EventLoop& loop, std::chrono::milliseconds time,
                                          IdleListener& listener) {
    platform::Handle<Display, XCloseDisplay> display(XOpenDisplay(nullptr));
    if (!display || !hasExtension(display.get())) return nullptr;
    XSetErrorHandler(ignoreError);
    return std::unique_ptr<IdleSource>(new X11Idle(display.release(), loop, time, listener));
}

X11Idle::X11Idle(Display* display, EventLoop& loop, Duration time, IdleListener& listener)
    : mDisplay(display), mTime(time), mListener(listener), mNextLook(loop, [this] { look(); }) {
    // No event is asked for, so this only notices the end of the server, at which Xlib ends the program.
    loop.watch(ConnectionNumber(display), [display] {
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
        }
    });
    mNextLook.start({});
}

// A locker or an open menu grabs the keyboard.
bool X11Idle::isOccupied() {
    return !platform::canGrabKeyboard(mDisplay.get()) || fullScreenWindowIsActive(mDisplay.get());
}

void X11Idle::look() {
    const Duration now = idleTime();
    const bool hadInput = now < mLastIdleTime;
    mLastIdleTime = now;
    setIdle(mIsIdle ? !hadInput : now >= mTime);
    mNextLook.start(untilNextLook(now));
}

void X11Idle::setIdle(bool isIdle) {
    if (isIdle == mIsIdle) return;
    mIsIdle = isIdle;
    isIdle ? mListener.becameIdle() : mListener.becameActive();
}

X11Idle::Duration X11Idle::untilNextLook(Duration idleTime) const {
    if (mIsIdle) return mListener.showsSaver() ? kPaceWithSaver : kPaceWithoutSaver;
    return std::max(mTime - idleTime, kPaceWithSaver);
}

X11Idle::Duration X11Idle::idleTime() {
    XScreenSaverInfo info{};
    XScreenSaverQueryInfo(mDisplay.get(), DefaultRootWindow(mDisplay.get()), &info);
    return Duration(info.idle);
}
