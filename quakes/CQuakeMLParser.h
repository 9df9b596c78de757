#pragma once

#include <string>
#include <vector>

class CQuakeEvent;
class CXMLTreeNode;

// Fetches the latest quakes from the feed service and turns them into events, all in its constructor.
class CQuakeMLParser {
  public:
    // Blocks until the answer is here. Trouble of any kind leaves a shorter list, and nobody is told.
    CQuakeMLParser();
    virtual ~CQuakeMLParser() = default;

    // In document order, with null for each event element that was declined. The events belong to nobody and
    // live to the end of the process.
    std::vector<CQuakeEvent*> GetEvents() const { return mEvents; }

    std::string GetQueryString() const;
    // Writes the local calendar dates from that many days ago to today. buffer holds 256 characters.
    void GetDateRange(int days, char* buffer) const;

    // Null for anything but an earthquake that has a time, a place and a magnitude.
    CQuakeEvent* CreateNewQuakeEvent(CXMLTreeNode* event) const;

  private:
    void RetrieveLatestQuakeEvents();
    void CollectEvents(CXMLTreeNode* eventParameters);

    std::vector<CQuakeEvent*> mEvents;
};
