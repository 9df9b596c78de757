#pragma once

#include <memory>
#include <string>
#include <vector>

#include "idle/Bus.h"
#include "idle/IdleSource.h"
#include "idle/LockWatch.h"
#include "idle/Saver.h"

// Decides when the saver runs: while the session is idle, and neither locked nor occupied by another program.
class Waiter final : public IdleListener {
  public:
    Waiter(EventLoop& loop, Bus& bus, std::vector<std::string> saverCommand);

    // Waits for that time without input. Returns false where no desktop reports it.
    bool watch(std::chrono::milliseconds time);

    void becameIdle() override;
    void becameActive() override;
    bool showsSaver() const override { return mSaver.isRunning(); }

  private:
    void update();
    void tryToStart();
    void saverEnded();

    EventLoop& mLoop;
    Bus& mBus;
    Saver mSaver;
    LockWatch mLock;
    Timer mRetry;
    std::unique_ptr<IdleSource> mSource;
    bool mWantsSaver = false;  // since the session became idle, until it is used or the saver ends by itself
};
