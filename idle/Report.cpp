#include "idle/Report.h"

#include <cstdio>

void report(const std::string& line) { std::fprintf(stderr, "tellmar-idle: %s\n", line.c_str()); }
