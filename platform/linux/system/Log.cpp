#include "platform/Log.h"

#include <cstdio>

#include "platform/PrintableText.h"

namespace platform {

namespace {

bool isVerbose = false;

}  // namespace

void log(const std::string& line) { std::fprintf(stderr, "tellmar: %s\n", printable(line).c_str()); }

void trace(const std::string& line) {
    if (isVerbose) log(line);
}

void setVerbose(bool verbose) { isVerbose = verbose; }

}  // namespace platform
