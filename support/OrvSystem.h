#pragma once

#include <cstdint>

// What the error log tells about the machine. The texts lie in static buffers that the next call of the same
// function overwrites.
class OrvSystem {
  public:
    // The system's version, its decimal digits packed as hexadecimal ones: 10.4.9 is 0x1049. Asked for once.
    static std::int32_t GetOSVersion();
    // Hz. Asked for once.
    static std::int32_t GetCPUSpeed();
    // One entry a processor, cut where the buffer ends; empty when nothing is known.
    static const char* GetCPUInfo();
    // The model, with a byte for its length before it.
    static const char* GetMachineName();
    // In Mac Roman; empty when it cannot be had.
    static const char* GetProcessName();

  private:
    static constexpr int kBufferSize = 256;

    static std::int32_t mSysVersion;
    static std::int32_t mClockSpeed;
};
