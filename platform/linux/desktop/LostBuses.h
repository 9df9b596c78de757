#pragma once

namespace platform {

// WebKit's sandbox brings in the folders of the message buses' sockets, and WebKit ends the whole program
// when one is gone, as after the end of another session. Gives such a bus an address at which it just cannot
// be reached.
void replaceLostBuses();

}  // namespace platform
