#pragma once

namespace platform {

// No fade takes longer from now on: ticks that come faster than usual need shorter ones.
void setLongestFade(double seconds);

}  // namespace platform
