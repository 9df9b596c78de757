#pragma once

#include <systemd/sd-bus.h>

#include <functional>
#include <list>
#include <string>

#include "idle/EventLoop.h"
#include "platform/linux/Handle.h"

using Message = platform::Handle<sd_bus_message, sd_bus_message_unref>;

// An object of another program on the bus, and which of its interfaces is meant.
struct BusObject {
    const char* name;
    const char* path;
    const char* interface;
};

// The session bus. Without one, calls get no answer and signals never come. The loop fails when the bus goes
// away.
class Bus {
  public:
    explicit Bus(EventLoop& loop);
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    bool isOpen() const { return mBus != nullptr; }

    // Takes the name from whoever owns it. onLost is called when another process takes it from this one.
    // Returns false when it cannot be taken.
    bool takeName(const std::string& name, std::function<void()> onLost);

    bool hasOwner(const char* name);

    // Calls handler with each signal that fits the rule.
    void onSignal(const std::string& rule, std::function<void(sd_bus_message*)> handler);

    // Waits for the answer, at most five seconds. Empty when the call fails. types and arguments as for
    // sd_bus_call_method.
    template <typename... Arguments>
    Message call(const BusObject& object, const char* method, const char* types = "",
                 Arguments... arguments) {
        sd_bus_message* answer = nullptr;
        if (isOpen())
            sd_bus_call_method(handle(), object.name, object.path, object.interface, method, nullptr, &answer,
                               types, arguments...);
        return Message(answer);
    }

    sd_bus* handle() const { return mBus.get(); }

  private:
    static int handle(sd_bus_message* message, void* handler, sd_bus_error*);

    std::list<std::function<void(sd_bus_message*)>> mHandlers;
    platform::Handle<sd_bus, sd_bus_flush_close_unref> mBus;
};

// The first argument of a signal or an answer; zero if it is of another type.
bool booleanIn(sd_bus_message* message);
std::uint32_t numberIn(sd_bus_message* message);
