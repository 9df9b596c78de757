#pragma once

#include <vector>

#include "platform/ViewAnimation.h"

namespace standins {

struct StartedFade {
    std::vector<platform::ViewAnimationDescription> descriptions;
    double duration;
    int blockingMode;
};

// The fades of the process; each is over, and has hidden or shown its views, when its start returns.
struct Fades {
    std::vector<StartedFade> started;
    int stopped = 0;
    int alive = 0;  // animations that exist
};

inline Fades& fades() {
    static Fades state;
    return state;
}

}  // namespace standins
