#include <algorithm>

#include "platform/AdvisoryLock.h"
#include "platform/HTTPTransfer.h"
#include "platform/RunLoop.h"
#include "tests/standins/Desktop.h"

using standins::desktop;

namespace platform {

// The body reaches a sink in pieces, as from a wire.
HTTPResponse get(const HTTPRequest& request) {
    desktop.requests.push_back(request);
    HTTPResponse response = desktop.service(request);
    if (response.errorCode != 0 || !request.sink) return response;
    for (std::string_view rest = response.body; !rest.empty();
         rest.remove_prefix(std::min<std::size_t>(rest.size(), 50)))
        if (!request.sink(rest.substr(0, 50))) response.errorCode = coreFoundationUnknownErr;
    response.body.clear();
    return response;
}

void RunLoop::runFor(int milliseconds) {
    desktop.monotonicMicroseconds += 1000LL * milliseconds;
    if (desktop.whileWaiting) desktop.whileWaiting();
}

bool RunLoop::isStopping() { return desktop.isStopping; }

// One lock for all paths, which another process holds or not.
struct AdvisoryLock::Descriptor {};

AdvisoryLock::AdvisoryLock(const std::string&) {}
AdvisoryLock::~AdvisoryLock() = default;

AdvisoryLock::State AdvisoryLock::tryToLock() { return desktop.lock; }
std::string AdvisoryLock::note() const { return desktop.lockNote; }
void AdvisoryLock::setNote(const std::string& text) { desktop.lockNote = text; }

}  // namespace platform
