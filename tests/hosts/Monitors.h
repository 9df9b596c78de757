#pragma once

#include <string>

struct _XDisplay;

// The outputs of an X server with RandR, apart from other code because X claims many plain names for itself.
// The space in which monitors may lie.
void setScreenSize(_XDisplay* connection, int width, int height);
void setMonitor(_XDisplay* connection, int monitor, int left, const std::string& mode);
void removeMonitor(_XDisplay* connection, int monitor);
