#include "platform/portable/NotificationCenter.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {

namespace {

struct Registration {
    const void* observer;
    std::string name;
    std::function<void()> handler;
};

std::vector<Registration>& registrations() {
    static std::vector<Registration> all;
    return all;
}

}  // namespace

void NotificationCenter::addObserver(const void* observer, const std::string& name,
                                     std::function<void()> handler) {
    const bool known = std::any_of(registrations().begin(), registrations().end(), [&](const auto& each) {
        return each.observer == observer && each.name == name;
    });
    if (!known) registrations().push_back({observer, name, std::move(handler)});
}

void NotificationCenter::removeObserver(const void* observer) {
    std::erase_if(registrations(), [&](const auto& each) { return each.observer == observer; });
}

void NotificationCenter::post(const std::string& name) {
    const auto snapshot = registrations();  // a handler may add or remove observers
    for (const auto& each : snapshot)
        if (each.name == name) each.handler();
}

}  // namespace platform
