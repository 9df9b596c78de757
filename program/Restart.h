#pragma once

#include <string>
#include <vector>

// The program's arguments, its name first.
std::vector<std::string> ownArguments();

// Restarts the program in place when it ends, with the same arguments, environment and process ID,
// once everything has been tidied up. Until then a signal simply ends it. Call prepareToRestart first thing
// in main.
void prepareToRestart();
void restartAtExit();
