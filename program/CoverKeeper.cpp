#include "program/CoverKeeper.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

// A process may end because its monitor was removed, before that is known here. After this time it is.
constexpr double kRetryPause = 1;
constexpr double kHour = 60 * 60;
constexpr std::size_t kMaxRestartsAnHour = 10;
constexpr double kSuccessorPatience = 55;  // twice the memory is used for at most a minute
constexpr double kChangeOfWindows = 1;     // desktops let a new window appear slowly
constexpr double kEndPatience = 4;         // with a process that was asked to end
constexpr double kNever = std::numeric_limits<double>::infinity();

}  // namespace

CoverKeeper::CoverKeeper(Hands& hands, const Conduct& conduct, Seconds now)
    : mHands(hands), mConduct(conduct), mSchedule(conduct.haste, now) {}

void CoverKeeper::added(Monitor monitor, Seconds now) { start(*mCovers.try_emplace(monitor).first, now); }

void CoverKeeper::removed(Monitor monitor, Seconds now) {
    const auto found = mCovers.find(monitor);
    if (found == mCovers.end()) return;
    for (Process* process : {&found->second.running, &found->second.successor, &found->second.predecessor})
        end(*process, now);
    mCovers.erase(found);
}

void CoverKeeper::start(Entry& entry, Seconds now) {
    auto& [monitor, cover] = entry;
    cover.quakes.reset();
    cover.running = mHands.start(monitor, false);
    if (!cover.running) cover.startDue = now + kRetryPause;
}

void CoverKeeper::end(Process& process, Seconds now) {
    if (!process) return;
    mHands.end(process);
    mEnding[std::exchange(process, 0)] = now + kEndPatience;
}

void CoverKeeper::shown(Process process, const std::string& quakes, Seconds now) {
    for (auto& [monitor, cover] : mCovers) {
        if (process == cover.running) cover.quakes = quakes;
        if (process != cover.successor) continue;
        if (quakes.empty())
            end(cover.successor, now);
        else
            handOver(cover, quakes, now);
    }
    if (!quakes.empty()) mSchedule.firstMapShown(now);
}

void CoverKeeper::handOver(Cover& cover, const std::string& quakes, Seconds now) {
    cover.predecessor = cover.running;
    cover.predecessorEnd = now + kChangeOfWindows;
    cover.running = std::exchange(cover.successor, 0);
    cover.quakes = quakes;
}

void CoverKeeper::ended(Process process, bool normally, Seconds now) {
    mEnding.erase(process);
    for (auto& [monitor, cover] : mCovers) {
        if (process == cover.predecessor) cover.predecessor = 0;
        if (process == cover.running) {
            cover.running = 0;
            cover.quakes.reset();
            cover.isFinished = normally;
        } else if (process == cover.successor) {
            cover.successor = 0;
        } else {
            continue;
        }
        cover.startDue = cover.successor ? cover.successorDeadline : now + kRetryPause;
    }
}

void CoverKeeper::answered(const std::optional<std::string>& quakes, Seconds now) {
    if (!mSchedule.isAsking()) return;
    mSchedule.answered(quakes.has_value(), somethingIsShown(), now);
    if (!quakes || quakes->empty()) return;
    for (Entry& entry : mCovers)
        if (entry.second.quakes && *entry.second.quakes != *quakes) startSuccessor(entry, now);
}

void CoverKeeper::startSuccessor(Entry& entry, Seconds now) {
    auto& [monitor, cover] = entry;
    if (!cover.running || cover.successor || cover.predecessor) return;
    cover.successor = mHands.start(monitor, true);
    cover.successorDeadline = now + kSuccessorPatience;
}

bool CoverKeeper::somethingIsShown() const {
    return std::any_of(mCovers.begin(), mCovers.end(),
                       [](const Entry& each) { return each.second.quakes && !each.second.quakes->empty(); });
}

void CoverKeeper::advance(Seconds now) {
    for (Entry& entry : mCovers) {
        Cover& cover = entry.second;
        if (cover.successor && cover.successorDeadline <= now) end(cover.successor, now);
        if (!cover.running && cover.startDue <= now) restart(entry, now);
        if (cover.predecessor && cover.predecessorEnd <= now) end(cover.predecessor, now);
    }
    for (auto& [process, due] : mEnding)
        if (due <= now) mHands.endByForce(process), due = kNever;
    if (!mConduct.refreshes || mSchedule.due() > now) return;
    if (mSchedule.isAsking()) {
        mHands.stopAsking();
        answered(std::nullopt, now);
    } else {
        mSchedule.asked(now);
        mHands.ask();
    }
}

void CoverKeeper::restart(Entry& entry, Seconds now) {
    Cover& cover = entry.second;
    if (!cover.isFinished && mayRestart(now)) {
        mRestarts.push_back(now);
        start(entry, now);
    } else if (!cover.isFinished && mConduct.persists) {
        cover.startDue = mRestarts.front() + kHour;
    } else {
        cover.startDue = kNever;
        mHands.endAll();
    }
}

bool CoverKeeper::mayRestart(Seconds now) {
    while (!mRestarts.empty() && mRestarts.front() <= now - kHour) mRestarts.pop_front();
    return mRestarts.size() < kMaxRestartsAnHour;
}

CoverKeeper::Seconds CoverKeeper::nextDue() const {
    Seconds due = mConduct.refreshes ? mSchedule.due() : kNever;
    for (const auto& [monitor, cover] : mCovers) {
        if (!cover.running) due = std::min(due, cover.startDue);
        if (cover.successor) due = std::min(due, cover.successorDeadline);
        if (cover.predecessor) due = std::min(due, cover.predecessorEnd);
    }
    for (const auto& [process, forceDue] : mEnding) due = std::min(due, forceDue);
    return due;
}
