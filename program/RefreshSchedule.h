#pragma once

// When to ask for other quakes. Times are seconds of a clock that never jumps.
class RefreshSchedule {
  public:
    // Asks haste times as often as usual, but every five seconds at most.
    RefreshSchedule(double haste, double now);

    // When the next question is due; while one is open, when to give it up.
    double due() const { return mDue; }
    bool isAsking() const { return mIsAsking; }

    void asked(double now);
    // Every ten minutes while something is shown, half as often after each request that failed in a row, but
    // at least hourly. While nothing is shown, after one minute at first and then less often.
    void answered(bool succeeded, bool somethingIsShown, double now);
    // The first map is on a screen: its quakes are fresh, and so no question is due yet.
    void firstMapShown(double now);

  private:
    double pause(bool somethingIsShown) const;

    const double mHaste;
    int mFailures = 0;  // in a row
    double mDue;
    bool mIsAsking = false;
    bool mHasAsked = false;
};
