#pragma once

// Learns when the session becomes idle and when it is used again.
class IdleListener {
  public:
    virtual void becameIdle() = 0;
    virtual void becameActive() = 0;
    // While it does, the next input must be reported at once.
    virtual bool showsSaver() const = 0;

  protected:
    ~IdleListener() = default;
};

// What reports to the listener, in the way of the desktop at hand.
class IdleSource {
  public:
    virtual ~IdleSource() = default;

    // Whether something on the screen leaves no room for a saver now.
    virtual bool isOccupied() { return false; }
};
