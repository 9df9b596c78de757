#include "tests/hosts/MonitorDisplay.h"

#include <filesystem>

#include "tests/hosts/Monitors.h"

namespace {

constexpr char kServer[] = "/usr/lib/xorg/Xorg";
constexpr char kDriver[] = "/usr/lib/xorg/modules/drivers/dummy_drv.so";

}  // namespace

std::string MonitorDisplay::obstacle() {
    for (const char* file : {kServer, kDriver})
        if (!std::filesystem::exists(file)) return std::string(file) + " is not installed";
    return "";
}

MonitorDisplay::MonitorDisplay()
    : TestDisplay({kServer, "-config", TEST_DATA "/xorg-dummy.conf", "-logfile", "/dev/null", "-novtswitch",
                   "-sharevts"}) {
    setScreenSize(connection(), 2560, 1024);  // as large as the configuration allows
    setMonitor(0, 0, "1280x720");
}

void MonitorDisplay::setMonitor(int monitor, int left, const std::string& mode) {
    ::setMonitor(connection(), monitor, left, mode);
}

void MonitorDisplay::removeMonitor(int monitor) { ::removeMonitor(connection(), monitor); }
