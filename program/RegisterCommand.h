#pragma once

#include <string>

// The user's settings file of XScreenSaver, and the command by which XScreenSaver can start this program.
// Each is empty where there is none.
std::string xscreensaverFile();
std::string saverCommand();

// Puts Tellmar into the list of programs of that file, or takes it out, and says what was done. The file from
// before is kept beside it, with .bak behind its name; an older copy stays, and the new one gets a number.
// Nothing is written when there is nothing to change. Returns the exit status.
int registerSaver(const std::string& file, const std::string& command);
int unregisterSaver(const std::string& file);
