#pragma once

namespace platform {

// The pages are still pictures: drawn by the CPU they take a third of the memory and look the same everywhere.
// So GTK and WebKit need not load a graphics driver into this process to learn what it could do, which costs
// time and 20 MB or more. The web process still loads one, because it does not start without.
//
// Call it before GTK starts. It changes the environment.
void keepGraphicsDriversOut();

}  // namespace platform
