#pragma once

#include <string>

// The user's XScreenSaver settings file, and the command with which XScreenSaver can start this program. Each
// is empty when there is none.
std::string xscreensaverFile();
std::string saverCommand();

// Adds Tellmar to the list of programs in that file, or removes it, and prints what was done. The old file is
// kept beside it with .bak appended to its name; an older copy stays, and the new one gets a number. Nothing
// is written when there is nothing to change. Returns the exit status.
int registerSaver(const std::string& file, const std::string& command);
int unregisterSaver(const std::string& file);

// What to do once Tellmar is listed.
const char* nextStep();
