#pragma once

class EventFeed;

// Prints the quakes as a table, in the order they will be shown, or why there are none. Returns the program's
// exit status.
int listQuakes(const EventFeed& feed);
