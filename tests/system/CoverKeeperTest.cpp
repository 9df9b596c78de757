#include "program/CoverKeeper.h"

#include <gmock/gmock.h>

#include <functional>

namespace {

using testing::DoubleNear, testing::Pointwise;

constexpr double kMinute = 60, kHour = 60 * kMinute, kDay = 24 * kHour;

// A desktop, its processes and the event service, in a time that is only counted.
class World : public CoverKeeper::Hands {
  public:
    using Process = CoverKeeper::Process;

    explicit World(const CoverKeeper::Conduct& conduct = {}) : mKeeper(*this, conduct, 0) {}

    void plugIn(const char* monitor) { mKeeper.added(monitor, now); }
    void unplug(const char* monitor) { mKeeper.removed(monitor, now); }

    void end(Process process, bool normally) {
        if (!mProcesses.erase(process)) return;
        mKeeper.ended(process, normally, now);
    }

    void runUntil(double time) {
        for (;;) {
            const double event = mEvents.empty() ? time : mEvents.begin()->first;
            const double due = std::max(mKeeper.nextDue(), now);
            if (std::min(event, due) >= time) break;
            now = std::min(event, due);
            if (event <= due)
                mEvents.extract(mEvents.begin()).mapped()();
            else
                mKeeper.advance(now);
            checkProcesses();
        }
        now = time;
    }

    // In the order of their starts.
    std::vector<Process> processesOf(const char* monitor) const {
        std::vector<Process> found;
        for (const auto& [number, process] : mProcesses)
            if (process.monitor == monitor) found.push_back(number);
        return found;
    }
    std::string seenOn(const char* monitor) const { return mProcesses.at(processesOf(monitor).at(0)).quakes; }
    std::size_t processCount() const { return mProcesses.size(); }

    double now = 0;
    std::optional<std::string> answer = "old";  // the service's, nothing while requests fail
    double secondsToMap = 5;  // of a process; those that need more than a day never get there
    bool processesObey = true;
    std::vector<double> questions, successorStarts;  // in minutes
    int starts = 0;
    bool isOver = false;

  private:
    struct Child {
        CoverKeeper::Monitor monitor;
        double start;
        std::string quakes;
    };

    Process start(CoverKeeper::Monitor monitor, bool isSuccessor) override {
        const Process number = ++starts;
        mProcesses[number] = {monitor, now, ""};
        if (isSuccessor) successorStarts.push_back(now / kMinute);
        later(secondsToMap, [this, number, quakes = mKept = answer.value_or(mKept)] {
            if (!mProcesses.contains(number)) return;
            mProcesses[number].quakes = quakes;
            mKeeper.shown(number, quakes, now);
        });
        return number;
    }
    void end(Process process) override {
        if (processesObey) later(0.1, [this, process] { end(process, true); });
    }
    void endByForce(Process process) override {
        later(0.1, [this, process] { end(process, false); });
    }
    void ask() override {
        questions.push_back(now / kMinute);
        later(1, [this] { mKeeper.answered(answer, now); });
    }
    void stopAsking() override {}
    void endAll() override { isOver = true; }

    void later(double seconds, std::function<void()> event) {
        mEvents.emplace(now + seconds, std::move(event));
    }

    // At most two for a monitor, and two for at most a minute.
    void checkProcesses() const {
        std::map<CoverKeeper::Monitor, int> counts;
        for (const auto& [number, process] : mProcesses) {
            const int count = ++counts[process.monitor];
            ASSERT_TRUE(count == 1 || (count == 2 && now - process.start <= kMinute));
        }
    }

    CoverKeeper mKeeper;
    std::string mKept;  // the last answer
    std::map<Process, Child> mProcesses;
    std::multimap<double, std::function<void()>> mEvents;
};

const char* const kLeft = "left";
const char* const kRight = "right";

TEST(CoverKeeperTest, KeepsAMonthOfChangesOnTheScreensWithoutGatheringProcesses) {
    World world;
    world.plugIn(kLeft);
    for (int day = 0; day < 30; ++day) {
        world.plugIn(kRight);
        world.runUntil(day * kDay + 12 * kHour);
        const bool isOffline = day == 10 || day == 11;
        world.answer = isOffline ? std::nullopt : std::optional("day " + std::to_string(day));
        const std::size_t replaced = world.successorStarts.size();
        while (!isOffline && world.successorStarts.size() == replaced) world.runUntil(world.now + 1);
        world.unplug(kRight);  // while processes are replaced
        world.runUntil((day + 1) * kDay);
        EXPECT_EQ(world.processCount(), 1U);
        EXPECT_EQ(world.seenOn(kLeft), "day " + std::to_string(isOffline ? 9 : day));
    }
    EXPECT_EQ(world.successorStarts.size(), 2 * 28U);
    EXPECT_NEAR(static_cast<double>(world.questions.size()), 28 * 144 + 2 * 24, 60);
}

TEST(CoverKeeperTest, AsksMoreOftenWhileNothingIsShown) {
    World world;
    world.answer.reset();
    world.plugIn(kLeft);
    world.runUntil(35 * kMinute);
    EXPECT_THAT(world.questions, Pointwise(DoubleNear(0.2), {1, 3, 8, 18, 28}));
    world.answer = "at last";
    world.runUntil(world.now + 11 * kMinute);
    EXPECT_EQ(world.seenOn(kLeft), "at last");
}

TEST(CoverKeeperTest, AsksLessOftenWhileRequestsFail) {
    World world;
    world.plugIn(kLeft);
    world.runUntil(kMinute);
    world.answer.reset();
    world.runUntil(5 * kHour);
    EXPECT_THAT(world.questions, Pointwise(DoubleNear(0.3), {10, 30, 70, 130, 190, 250}));
}

TEST(CoverKeeperTest, EndsAProcessASecondAfterItsSuccessorHasComeToTheScreen) {
    World world;
    world.plugIn(kLeft);
    world.runUntil(10 * kMinute);
    world.answer = "new";
    while (world.successorStarts.empty()) world.runUntil(world.now + 0.1);
    world.runUntil(world.now + world.secondsToMap + 0.8);
    EXPECT_EQ(world.processCount(), 2U);
    world.runUntil(world.now + 0.5);
    EXPECT_EQ(world.processCount(), 1U);
    EXPECT_EQ(world.seenOn(kLeft), "new");
}

TEST(CoverKeeperTest, LeavesAProcessInPlaceWhenItsSuccessorFails) {
    World world;
    world.plugIn(kLeft);
    world.runUntil(kMinute);
    const auto first = world.processesOf(kLeft);
    world.answer = "new";
    world.secondsToMap = 2 * kDay;
    world.processesObey = false;
    world.runUntil(10 * kMinute + 30);
    EXPECT_EQ(world.processesOf(kLeft).size(), 2U);
    world.runUntil(12 * kMinute);
    EXPECT_EQ(world.processesOf(kLeft), first);
    world.runUntil(20 * kMinute + 30);
    world.end(world.processesOf(kLeft).back(), false);
    EXPECT_EQ(world.processesOf(kLeft), first);
    EXPECT_EQ(world.seenOn(kLeft), "old");

    world.secondsToMap = 20;
    world.runUntil(30 * kMinute + 30);
    world.end(first.front(), false);  // shortly before it would have been replaced
    world.runUntil(31 * kMinute);
    EXPECT_EQ(world.seenOn(kLeft), "new");
    EXPECT_FALSE(world.isOver);
}

TEST(CoverKeeperTest, ReplacesCrashedProcessesTenTimesAnHour) {
    for (const bool persists : {false, true}) {
        World world({.refreshes = false, .persists = persists});
        world.plugIn(kLeft);
        while (!world.isOver && world.now < 50 * kMinute) {
            world.runUntil(world.now + 10);
            if (world.processCount()) world.end(world.processesOf(kLeft).front(), false);
        }
        EXPECT_EQ(world.starts, 1 + 10);
        EXPECT_EQ(world.isOver, !persists);
        world.runUntil(62 * kMinute);
        EXPECT_EQ(world.processCount(), persists ? 1U : 0U);
    }
}

TEST(CoverKeeperTest, EndsAllAfterAProcessThatEndedNormallyUnlessItsMonitorIsGone) {
    World world;
    world.plugIn(kLeft);
    world.plugIn(kRight);
    world.runUntil(kMinute);
    world.end(world.processesOf(kRight).front(), true);
    world.unplug(kRight);
    world.runUntil(2 * kMinute);
    EXPECT_FALSE(world.isOver);
    world.end(world.processesOf(kLeft).front(), true);
    world.runUntil(3 * kMinute);
    EXPECT_TRUE(world.isOver);
}

}  // namespace
