#pragma once

class Bus;

// Whether a program, such as a player, asks the desktop to stay awake.
bool isInhibited(Bus& bus);
