#pragma once

#include <functional>
#include <string>

namespace platform {

// The process's one notification centre.
class NotificationCenter {
  public:
    // Calls handler for every later post of name, whoever posts it. Registering the same observer for the
    // same name again changes nothing.
    static void addObserver(const void* observer, const std::string& name, std::function<void()> handler);
    static void removeObserver(const void* observer);
    static void post(const std::string& name);
};

}  // namespace platform
