#include "program/Covers.h"

#include <gdk/gdk.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/Timer.h"
#include "platform/linux/desktop/KeyboardFocus.h"
#include "platform/linux/desktop/ScreenAwake.h"
#include "platform/linux/desktop/SessionBus.h"
#include "program/ChildProcess.h"
#include "program/CoverKeeper.h"
#include "program/CoverTask.h"
#include "program/Options.h"

using platform::RunLoop;

namespace {

constexpr int kEndPatience = 2000;              // milliseconds
constexpr double kLongestSleep = 24 * 60 * 60;  // seconds

double now() { return static_cast<double>(platform::monotonicMicroseconds()) / 1e6; }

CoverKeeper::Conduct conductFor(const Options& options) {
    return {.refreshes = options.feed.empty(), .persists = options.kiosk, .haste = options.speed};
}

// Does what the keeper decides, and passes on what happens to monitors and processes.
class Covers : CoverKeeper::Hands {
  public:
    explicit Covers(const Options& options) : mKeeper(*this, conductFor(options), now()) {
        GdkDisplay* display = gdk_display_get_default();
        g_signal_connect_swapped(display, "monitor-added", G_CALLBACK(monitorAdded), this);
        g_signal_connect_swapped(display, "monitor-removed", G_CALLBACK(monitorRemoved), this);
        for (int i = 0; i < gdk_display_get_n_monitors(display); ++i)
            monitorAdded(this, gdk_display_get_monitor(display, i));
    }

    ~Covers() override {
        g_signal_handlers_disconnect_by_data(gdk_display_get_default(), this);
        mIsEnding = true;
        endChildren(&ChildProcess::end);
        endChildren(&ChildProcess::endByForce);
    }
    Covers(const Covers&) = delete;
    Covers& operator=(const Covers&) = delete;

    bool windowsAreComing() const { return !mComing.empty(); }

  private:
    static void monitorAdded(Covers* self, GdkMonitor* monitor) {
        self->react([&] { self->mKeeper.added(monitor, now()); });
    }

    static void monitorRemoved(Covers* self, GdkMonitor* monitor) {
        self->react([&] { self->mKeeper.removed(monitor, now()); });
    }

    void endChildren(void (ChildProcess::*how)() const) {
        for (const auto& [number, child] : mChildren) (*child.*how)();
        RunLoop::finish([this] { return mChildren.empty(); }, kEndPatience);
    }

    // Tells the keeper what has happened, and calls it when its next step is due.
    template <typename Step>
    void react(Step tell) {
        if (mIsEnding) return;
        tell();
        const double seconds = std::clamp(mKeeper.nextDue() - now(), 0.0, kLongestSleep);
        mTimer =
            std::make_unique<platform::Timer>(static_cast<int>(seconds * 1000) + 1, [this] { advance(); });
    }

    void advance() {
        react([this] { mKeeper.advance(now()); });
    }

    CoverKeeper::Process start(CoverKeeper::Monitor monitor, bool isSuccessor) override {
        const pid_t cover = run(
            isSuccessor ? CoverTask::Successor : CoverTask::Cover,
            static_cast<GdkMonitor*>(const_cast<void*>(monitor)),
            [this](pid_t process, const std::string& report) { reported(process, report); },
            [this](pid_t process, int status) {
                mComing.erase(process);
                mKeeper.ended(process, status == 0, now());
            });
        if (cover) mComing.insert(cover);
        return cover;
    }

    void reported(pid_t process, const std::string& report) {
        mComing.erase(process);
        if (report != kWindowReport) mKeeper.shown(process, report, now());
    }

    void end(CoverKeeper::Process process) override { mChildren.at(process)->end(); }
    void endByForce(CoverKeeper::Process process) override { mChildren.at(process)->endByForce(); }

    void ask() override {
        mCheck = run(
            CoverTask::Check, nullptr,
            [this](pid_t process, const std::string& quakes) { answer(process, quakes); },
            [this](pid_t process, int) { answer(process, std::nullopt); });
    }

    void stopAsking() override {
        if (mChildren.contains(mCheck)) mChildren.at(mCheck)->endByForce();
    }

    // Only the first answer of the last process that was asked counts.
    void answer(pid_t process, const std::optional<std::string>& quakes) {
        if (process == mCheck) mKeeper.answered(quakes, now());
    }

    void endAll() override { RunLoop::stop(); }

    // Returns the process's number, 0 on failure.
    template <typename OnLine, typename OnEnd>
    pid_t run(CoverTask task, GdkMonitor* monitor, OnLine onLine, OnEnd onEnd) {
        auto child = ChildProcess::start(
            kCoverTaskVariable, coverTaskText(task, monitor),
            {.line = [this, onLine](pid_t process,
                                    const std::string& line) { react([&] { onLine(process, line); }); },
             .end =
                 [this, onEnd](pid_t process, int status) {
                     mChildren.erase(process);
                     react([&] { onEnd(process, status); });
                 }});
        if (!child) return 0;
        const pid_t number = child->number();
        mChildren[number] = std::move(child);
        return number;
    }

    CoverKeeper mKeeper;
    std::map<pid_t, std::unique_ptr<ChildProcess>> mChildren;
    std::set<pid_t> mComing;  // whose windows are not on the screen yet
    pid_t mCheck = 0;
    std::unique_ptr<platform::Timer> mTimer;
    bool mIsEnding = false;
};

}  // namespace

int runCovers(const Options& options) {
    platform::closeOverview();
    if (platform::keyboardIsTaken()) {
        if (!RunLoop::isStopping())
            platform::log("a screen locker or an open menu has the keyboard: close it first");
        return 1;
    }
    platform::FocusKeeper focus;
    std::optional<platform::ScreenAwake> awake;
    if (options.kiosk) awake.emplace();
    const Covers covers(options);
    RunLoop::run();
    focus.giveBack(covers.windowsAreComing());
    return 0;
}
