#pragma once

struct EventElement;

// Whether an event of a service is an earthquake to show: one by its type, or one without a type that
// somebody reviewed or that enough stations recorded, and of which the list's parser makes a quake.
bool isEarthquakeToShow(const EventElement& event);
