#pragma once

#include <string>
#include <vector>

class CQuakeEvent;
class CXMLTreeNode;

// Fetches the latest quakes from the feed service and turns them into events, all in its constructor.
class CQuakeMLParser {
  public:
    // Blocks until the answer arrives. Errors of any kind shorten the list and are not reported.
    CQuakeMLParser();
    virtual ~CQuakeMLParser() = default;

    // In document order, with null for each event element that could not be used. The events have no owner
    // and live until the process ends.
    std::vector<CQuakeEvent*> GetEvents() const { return mEvents; }

    std::string GetQueryString() const;
    // Writes the local calendar dates of that many days ago and of today. buffer holds 256 characters.
    void GetDateRange(int days, char* buffer) const;

    // Null for anything but an earthquake that has a time, a place and a magnitude.
    CQuakeEvent* CreateNewQuakeEvent(CXMLTreeNode* event) const;

  private:
    void RetrieveLatestQuakeEvents();
    void CollectEvents(CXMLTreeNode* eventParameters);

    std::vector<CQuakeEvent*> mEvents;
};
