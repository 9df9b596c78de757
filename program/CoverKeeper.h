#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>

#include "program/RefreshSchedule.h"

// Keeps each monitor covered by a process of its own, and the quakes on all of them fresh: when there are
// other quakes to show, each process gets a successor, which replaces it once its first map is on the screen.
// Only decides; its owner passes the time and what happened, and does what is decided.
class CoverKeeper {
  public:
    using Monitor = const void*;  // a key
    using Process = int;          // its number; 0 for none
    using Seconds = double;       // of a clock that never jumps

    class Hands {
      public:
        virtual ~Hands() = default;
        // Starts a process for the monitor. A successor stays off the screen until its first map is ready.
        // Returns 0 on failure.
        virtual Process start(Monitor monitor, bool isSuccessor) = 0;
        virtual void end(Process process) = 0;
        virtual void endByForce(Process process) = 0;
        // Starts to learn which quakes there are; answered is called later.
        virtual void ask() = 0;
        virtual void stopAsking() = 0;
        // Ends all processes and this one.
        virtual void endAll() = 0;
    };

    struct Conduct {
        bool refreshes = true;  // asks for other quakes
        bool persists = false;  // covers monitors again later whose processes keep crashing
        double haste = 1;       // how many times as often to ask
    };

    CoverKeeper(Hands& hands, const Conduct& conduct, Seconds now);

    void added(Monitor monitor, Seconds now);
    void removed(Monitor monitor, Seconds now);
    // The first map of the process is on the screen, or it has none to show. The text stands for its quakes
    // and is empty if there are none.
    void shown(Process process, const std::string& quakes, Seconds now);
    // A process that ended normally was asked to, or has reported an error to the user.
    void ended(Process process, bool normally, Seconds now);
    // The text stands for the quakes there are and is empty if there are none; no text if the request failed.
    void answered(const std::optional<std::string>& quakes, Seconds now);

    // Does what is due: to be called when nextDue has come.
    void advance(Seconds now);
    Seconds nextDue() const;

  private:
    struct Cover {
        Process running = 0;
        Seconds startDue = 0;               // if none is running
        bool isFinished = false;            // the last one ended normally
        std::optional<std::string> quakes;  // on the screen; nothing before the first map

        Process successor = 0;
        Seconds successorDeadline = 0;

        Process predecessor =
            0;  // still there, for the time that the desktop may take to bring in its successor
        Seconds predecessorEnd = 0;
    };
    using Entry = std::pair<const Monitor, Cover>;

    void start(Entry& entry, Seconds now);
    void restart(Entry& entry, Seconds now);
    bool mayRestart(Seconds now);
    void handOver(Cover& cover, const std::string& quakes, Seconds now);
    void startSuccessor(Entry& entry, Seconds now);
    void end(Process& process, Seconds now);
    bool somethingIsShown() const;

    Hands& mHands;
    const Conduct mConduct;
    std::map<Monitor, Cover> mCovers;
    std::map<Process, Seconds> mEnding;  // asked to end, and when to use force
    std::deque<Seconds> mRestarts;       // of the last hour
    RefreshSchedule mSchedule;
};
