#include "tests/standins/SystemInfo.h"

using standins::machine;

namespace platform {

SystemNames systemNames() { return machine().names; }
std::int32_t systemVersion() { return machine().version; }
std::int32_t processorClock() { return machine().clock; }
std::string machineName() { return machine().name; }
std::string processName() { return machine().process; }
std::vector<Processor> processors() { return machine().processors; }

}  // namespace platform
