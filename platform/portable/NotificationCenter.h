#pragma once

#include <functional>
#include <string>

namespace platform {

// The process's one notification centre: names to be told of, and those who asked.
class NotificationCenter {
  public:
    // Tells observer through handler of every later post of name, whoever posts it. A registration that
    // repeats an earlier one (same observer, same name) changes nothing.
    static void addObserver(const void* observer, const std::string& name, std::function<void()> handler);
    static void removeObserver(const void* observer);
    static void post(const std::string& name);
};

}  // namespace platform
