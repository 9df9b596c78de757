#pragma once

#include <cstdint>
#include <vector>

class CQuakeEvent;

// The one list of the quakes to show, in the feed's order. An entry is null where the feed held an event that
// could not be used.
class CQuakeList {
  public:
    // Created on first use, which fetches the feed and blocks until it arrives. Never deleted, never
    // refreshed; empty when the feed cannot be loaded.
    static CQuakeList* Instance();

    CQuakeList();
    virtual ~CQuakeList() = default;
    CQuakeList(const CQuakeList&) = delete;
    CQuakeList& operator=(const CQuakeList&) = delete;

    void KeepBiggestQuakes(int count);

    // What is left, in the feed's order.
    const std::vector<CQuakeEvent*>& GetQuakes() const { return mQuakes; }

    // Walks the list backwards from its end, over and over. Null for an empty list and for a null entry.
    CQuakeEvent* GetNextQuake();

    void DumpQuakeInfo() const;

    static CQuakeList* mSingletonInstance;

  private:
    std::vector<CQuakeEvent*> mQuakes;
    std::int32_t mCurrentIndex = 0;
};
