#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

// A process that this one started. It never outlives this one.
class Child {
  public:
    struct Place {
        std::string folder;                    // the current one
        std::vector<std::string> environment;  // NAME=value, and nothing else
        std::string output, errors;            // files that take stdout and stderr
    };

    Child(const std::vector<std::string>& command, const Place& place);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t id() const { return mId; }
    void signal(int number);
    // The exit status once it is over, the signal's number below zero when one ended it.
    std::optional<int> status();

  private:
    pid_t mId;
    std::optional<int> mStatus;
};
