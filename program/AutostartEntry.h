#pragma once

#include <string>

// The entry in the user's autostart folder by which sessions start the waiter.
class AutostartEntry {
  public:
    AutostartEntry();

    const std::string& path() const { return mPath; }
    // Empty when there is no entry.
    std::string minutes() const;

    // Both return false on failure, and leave the entry as it was.
    bool write(const std::string& waiter, const std::string& minutes) const;
    bool remove() const;

  private:
    std::string mPath;
};
