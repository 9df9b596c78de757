#pragma once

#include <string>

// The bus name of this session's waiter. It holds the display's name, since all sessions of a user may share
// one bus.
std::string sessionName();
