#include "tests/standins/SystemInfo.h"

namespace standins {

Machine& machine() {
    static Machine machine;
    return machine;
}

}  // namespace standins

namespace platform {

SystemNames systemNames() { return standins::machine().names; }
std::int32_t systemVersion() { return standins::machine().version; }
std::int32_t processorClock() { return standins::machine().clock; }
std::string machineName() { return standins::machine().name; }
std::string processName() { return standins::machine().process; }
std::vector<Processor> processors() { return standins::machine().processors; }

}  // namespace platform
