#include "platform/StringList.h"

namespace platform {

// One list, 128, with two entries.
std::string stringFromList(short listID, short index) {
    if (listID != 128) return "";
    if (index == 1) return "%s of %d";
    return index == 2 ? std::string(600, 'x') : "";
}

}  // namespace platform
