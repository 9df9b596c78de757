#include "idle/Waiter.h"

#include <cstdlib>
#include <utility>

#include "idle/Inhibition.h"
#include "idle/MutterIdle.h"
#include "idle/WaylandIdle.h"
#include "idle/X11Idle.h"

namespace {

// How soon to look again whether a program still keeps the saver away.
constexpr std::chrono::seconds kPause{2};

}  // namespace

Waiter::Waiter(EventLoop& loop, Bus& bus, std::vector<std::string> saverCommand)
    : mLoop(loop),
      mBus(bus),
      mSaver(loop, std::move(saverCommand), [this] { saverEnded(); }),
      mLock(bus, [this] { update(); }),
      mRetry(loop, [this] { update(); }) {}

bool Waiter::watch(std::chrono::milliseconds time) {
    mSource = MutterIdle::open(mLoop, mBus, time, *this);
    if (!mSource) mSource = WaylandIdle::open(mLoop, time, *this);
    // An X server below a Wayland compositor does not see all input.
    if (!mSource && !std::getenv("WAYLAND_DISPLAY")) mSource = X11Idle::open(mLoop, time, *this);
    return mSource != nullptr;
}

void Waiter::becameIdle() {
    mWantsSaver = true;
    update();
}

void Waiter::becameActive() {
    mWantsSaver = false;
    update();
}

void Waiter::update() {
    mRetry.stop();
    const bool isWanted = mWantsSaver && !mLock.isLocked();
    if (mSaver.isRunning() && !isWanted) mSaver.end();
    if (!mSaver.isRunning() && isWanted) tryToStart();
}

void Waiter::tryToStart() {
    if (mSource->isOccupied() || isInhibited(mBus)) return mRetry.start(kPause);
    mSaver.start();
}

// A saver that ended by itself has seen input or cannot run: either way it waits until the session is idle
// again. One that was asked to end may be wanted again by now.
void Waiter::saverEnded() {
    if (!mSaver.wasAskedToEnd()) mWantsSaver = false;
    update();
}
