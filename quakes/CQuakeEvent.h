#pragma once

// One earthquake as the feed reports it. The feed parser creates events, and they live until the process
// ends; everybody else holds plain pointers to them.
class CQuakeEvent {
  public:
    // Replaces everything from the last full stop of the time (fractional seconds and zone letter) by
    // " +0000". A time without a full stop is kept unchanged.
    CQuakeEvent(const char* time, double magnitude, double latitude, double longitude, double depth);
    CQuakeEvent(const CQuakeEvent& other) = default;
    CQuakeEvent& operator=(const CQuakeEvent& other) = default;
    virtual ~CQuakeEvent() = default;

    bool operator<(const CQuakeEvent& other) const { return mMagnitude < other.mMagnitude; }

    char mTime[256];  // UTC
    double mMagnitude;
    double mLatitude;   // degrees
    double mLongitude;  // degrees
    double mDepth;      // kilometres

  private:
    void ReplaceFractionByZone();
};
