#include "platform/PrintableText.h"

#include <glib.h>

#include "platform/linux/Handles.h"

namespace platform {

namespace {

bool isInvisible(gunichar character) {
    const GUnicodeType type = g_unichar_type(character);
    return type == G_UNICODE_CONTROL || type == G_UNICODE_FORMAT || type == G_UNICODE_LINE_SEPARATOR ||
           type == G_UNICODE_PARAGRAPH_SEPARATOR;
}

}  // namespace

std::string printable(const std::string& text) {
    const GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string result;
    for (const char *character = valid.get(), *next; *character; character = next) {
        next = g_utf8_next_char(character);
        if (isInvisible(g_utf8_get_char(character)))
            result += ' ';
        else
            result.append(character, next);
    }
    return result;
}

}  // namespace platform
