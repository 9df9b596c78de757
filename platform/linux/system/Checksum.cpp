#include "platform/Checksum.h"

#include <glib.h>

#include "platform/linux/Handles.h"

namespace platform {

std::string sha256(std::string_view bytes) {
    const GText sum(g_compute_checksum_for_data(G_CHECKSUM_SHA256,
                                                reinterpret_cast<const guchar*>(bytes.data()), bytes.size()));
    return sum.get();
}

}  // namespace platform
