#include "platform/SystemInfo.h"

#include <errno.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <limits>
#include <string_view>

namespace platform {

namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

std::string firstLine(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

// The rest of the first line that begins with key.
std::string valueOf(const std::string& path, std::string_view key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, key.size(), key) == 0) return line.substr(key.size());
    }
    return "";
}

std::int32_t packDigits(std::string_view text) {
    std::int32_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') continue;
        if (value > kLargest / 16) break;
        value = value * 16 + (c - '0');
    }
    return value;
}

std::int32_t hertz(double value) { return value >= kLargest ? kLargest : static_cast<std::int32_t>(value); }

// The first number in text, 0 when there is none.
double number(std::string_view text) {
    const std::size_t start = text.find_first_of("0123456789");
    if (start == std::string_view::npos) return 0;
    double value = 0;
    std::from_chars(text.data() + start, text.data() + text.size(), value);
    return value;
}

// Firmware pads its strings with blanks or ends them with a zero byte.
std::string unpadded(const std::string& text) {
    constexpr std::string_view kPadding(" \t\r\n\0", 5);
    const std::size_t first = text.find_first_not_of(kPadding);
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(kPadding) - first + 1);
}

struct Family {
    std::string_view prefix;  // of the machine that uname reports
    Processor processor;
};

constexpr std::int32_t k64Bit = 0x01000000;
constexpr std::int32_t kX86 = 7, kARM = 12, kPowerPC = 18;
// clang-format off
constexpr Family kFamilies[] = {
    {"x86_64", {kX86 | k64Bit, 3}},
    {"i386", {kX86, 3}},
    {"i686", {kX86, 3}},
    {"aarch64", {kARM | k64Bit, 0}},
    {"arm", {kARM, 0}},
    {"ppc64", {kPowerPC | k64Bit, 0}},
    {"ppc", {kPowerPC, 0}},
};
// clang-format on
constexpr Processor kUnknownProcessor = {-1, -1};

Processor processorOf(std::string_view machine) {
    for (const Family& family : kFamilies) {
        if (machine.substr(0, family.prefix.size()) == family.prefix) return family.processor;
    }
    return kUnknownProcessor;
}

}  // namespace

SystemNames systemNames() {
    utsname names{};
    if (uname(&names) != 0) return {};
    return {names.sysname, names.nodename, names.release, names.machine};
}

std::int32_t systemVersion() { return packDigits(valueOf("/etc/os-release", "VERSION_ID=")); }

std::int32_t processorClock() {
    const double kilohertz = number(firstLine("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq"));
    if (kilohertz > 0) return hertz(kilohertz * 1e3);
    return hertz(number(valueOf("/proc/cpuinfo", "cpu MHz")) * 1e6);
}

std::string machineName() {
    const std::string product = unpadded(firstLine("/sys/class/dmi/id/product_name"));
    return product.empty() ? unpadded(firstLine("/proc/device-tree/model")) : product;
}

std::string processName() { return program_invocation_short_name; }

std::vector<Processor> processors() {
    const long count = sysconf(_SC_NPROCESSORS_ONLN);
    if (count <= 0) return {};
    return std::vector<Processor>(static_cast<std::size_t>(count), processorOf(systemNames().machine));
}

}  // namespace platform
