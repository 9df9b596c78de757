#pragma once

#include <string>

#include "platform/portable/Geometry.h"

class CQuakeEvent;

// Makes the web page that shows one quake on a map, from the bundle's template.
class MapsPageWriter {
  public:
    // Writes the page for a map of that size in pixels to locationOfTempPage. Nothing is written for a null
    // event. The first write that fails is logged.
    void writeForEvent(const CQuakeEvent* event, const platform::Size& frameSize);

    // The same file for every writer of the process; another one once a write had to go elsewhere. Empty when
    // there is no temporary folder.
    std::string locationOfTempPage() const;

    // A template that cannot be read is reported as an error, which ends the process.
    std::string loadTemplatePage() const;

    // The time as text in the local time zone, or the current time when zulu is not a time. A null zulu gives
    // the current time in another form.
    std::string localDateStringFromZulu(const char* zulu) const;

    // The page with the call that starts the map, and with the map's size, in place of their markers.
    std::string insertMapsFunctionCall(const std::string& page, const CQuakeEvent& event,
                                       const platform::Size& frameSize) const;
};
