#pragma once

#include <functional>
#include <memory>

namespace platform {

// Calls a function once, from the main loop, unless it is destroyed before. The function may destroy it.
class Timer {
  public:
    Timer(int milliseconds, std::function<void()> function);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

  private:
    struct Source;
    std::unique_ptr<Source> mSource;
};

}  // namespace platform
