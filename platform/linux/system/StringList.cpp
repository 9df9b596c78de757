#include "platform/StringList.h"

#include <glib.h>

#include <memory>

#include "platform/Bundle.h"

namespace platform {

namespace {

struct Free {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(char* text) const { g_free(text); }
};

}  // namespace

// The lists are the groups of an ini file, their entries its keys.
std::string stringFromList(short listID, short index) {
    const std::unique_ptr<GKeyFile, Free> lists(g_key_file_new());
    const std::string path = pathForResource("strings.ini");
    if (!g_key_file_load_from_file(lists.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) return "";
    const std::unique_ptr<char, Free> text(g_key_file_get_string(lists.get(), std::to_string(listID).c_str(),
                                                                 std::to_string(index).c_str(), nullptr));
    return text == nullptr ? "" : text.get();
}

}  // namespace platform
