#include "support/OrvSystem.h"

#include <string>
#include <vector>

#include "platform/SystemInfo.h"
#include "support/OrvStr.h"
#include "support/PascalString.h"

namespace {

// The text of processor number out of count, numbered from 1.
std::string describe(const platform::Processor& processor, std::size_t number, std::size_t count) {
    return "CPU #" + std::to_string(number) + "/" + std::to_string(count) +
           ": TYPE=" + std::to_string(processor.type) + ";SUB_T=" + std::to_string(processor.subtype);
}

}  // namespace

std::int32_t OrvSystem::mSysVersion = 0;
std::int32_t OrvSystem::mClockSpeed = 0;

std::int32_t OrvSystem::GetOSVersion() {
    if (mSysVersion == 0) mSysVersion = platform::systemVersion();
    return mSysVersion;
}

std::int32_t OrvSystem::GetCPUSpeed() {
    if (mClockSpeed == 0) mClockSpeed = platform::processorClock();
    return mClockSpeed;
}

const char* OrvSystem::GetCPUInfo() {
    static char buffer[kBufferSize];
    const std::vector<platform::Processor> processors = platform::processors();
    std::string text;
    for (std::size_t i = 1; i <= processors.size(); ++i) {
        text += describe(processors[i - 1], i, processors.size());
        if (i < processors.size()) text += ", ";
    }
    return OrvStr::strncpy(buffer, text.c_str(), kBufferSize);
}

const char* OrvSystem::GetMachineName() {
    static char buffer[kBufferSize];
    Str255 name{};
    CopyCStringToPascal(platform::machineName().c_str(), name);
    const std::string lengthAndText(reinterpret_cast<const char*>(name), name[0] + 1);
    return OrvStr::strncpy(buffer, lengthAndText.c_str(), kBufferSize);
}

const char* OrvSystem::GetProcessName() {
    static char buffer[kBufferSize];
    buffer[0] = '\0';
    const std::string processName = platform::processName();
    const char* name = OrvStr::GetCStrFromCFStr(processName, platform::kCFStringEncodingMacRoman);
    if (name != nullptr) OrvStr::strncpy(buffer, name, kBufferSize);
    return buffer;
}
