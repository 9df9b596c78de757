#pragma once

#include <cstdint>

// What the error log says about the machine. Returned pointers refer to static buffers that the next call of
// the same function overwrites.
class OrvSystem {
  public:
    // The system's version, its decimal digits packed as hexadecimal ones: 10.4.9 is 0x1049. Read once.
    static std::int32_t GetOSVersion();
    // Hz. Read once.
    static std::int32_t GetCPUSpeed();
    // One entry per processor, cut at the end of the buffer; empty if nothing is known.
    static const char* GetCPUInfo();
    // The model, preceded by a length byte.
    static const char* GetMachineName();
    // In Mac Roman; empty if it is unknown.
    static const char* GetProcessName();

  private:
    static constexpr int kBufferSize = 256;

    static std::int32_t mSysVersion;
    static std::int32_t mClockSpeed;
};
