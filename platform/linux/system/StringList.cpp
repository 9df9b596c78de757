#include "platform/StringList.h"

#include <glib.h>

#include "platform/Bundle.h"
#include "platform/linux/Handles.h"

namespace platform {

// Each list is a group of an ini file, each entry a key.
std::string stringFromList(short listID, short index) {
    const KeyFileRef lists(g_key_file_new());
    const std::string path = pathForResource("strings.ini");
    if (!g_key_file_load_from_file(lists.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) return "";
    return toString(GText(g_key_file_get_string(lists.get(), std::to_string(listID).c_str(),
                                                std::to_string(index).c_str(), nullptr)));
}

}  // namespace platform
