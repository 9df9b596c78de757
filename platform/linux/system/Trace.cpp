#include "platform/linux/system/Trace.h"

#include <cstdio>

namespace platform {

namespace {

bool wanted = false;

}  // namespace

void setVerbose(bool verbose) { wanted = verbose; }

void trace(const std::string& line) {
    if (wanted) std::fprintf(stderr, "tellmar: %s\n", line.c_str());
}

}  // namespace platform
