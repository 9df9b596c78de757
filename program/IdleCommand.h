#pragma once

#include <string>

// Makes Tellmar start when the session is idle for that many minutes, in this session and in later ones. With
// "off" it no longer does, and with an empty value the command only reports how things stand. Returns the
// exit status.
int runIdleCommand(const std::string& value);
