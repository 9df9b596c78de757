#include "idle/Inhibition.h"

#include "idle/Bus.h"

namespace {

// Cinnamon and GNOME.
constexpr BusObject kSessionManager{"org.gnome.SessionManager", "/org/gnome/SessionManager",
                                    "org.gnome.SessionManager"};
constexpr std::uint32_t kIdle = 8;

constexpr BusObject kPolicyAgent{"org.kde.Solid.PowerManagement.PolicyAgent",
                                 "/org/kde/Solid/PowerManagement/PolicyAgent",
                                 "org.kde.Solid.PowerManagement.PolicyAgent"};
constexpr std::uint32_t kChangeScreenSettings = 4;

}  // namespace

bool isInhibited(Bus& bus) {
    return booleanIn(bus.call(kSessionManager, "IsInhibited", "u", kIdle).get()) ||
           booleanIn(bus.call(kPolicyAgent, "HasInhibition", "u", kChangeScreenSettings).get());
}
