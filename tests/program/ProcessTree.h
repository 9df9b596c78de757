#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// All that the process has started, directly or not, and that still runs.
std::vector<pid_t> descendants(pid_t process);
// Those of them whose command line names this program.
std::vector<pid_t> descendantsRunning(pid_t process, const std::string& program);
// False for a process that is over, also when nobody has asked for its status yet.
bool isRunning(pid_t process);
