#pragma once

#include <string>

#include "platform/portable/Geometry.h"

class CQuakeEvent;

// Makes the web page that shows one quake on a map, from the bundle's template.
class MapsPageWriter {
  public:
    // Writes the page for a map of that size in pixels to locationOfTempPage. Writes nothing for a null
    // event, and logs the first write that fails.
    void writeForEvent(const CQuakeEvent* event, const platform::Size& frameSize);

    // The same file for every writer in the process, until a write has to go elsewhere. Empty when there is
    // no temporary folder.
    std::string locationOfTempPage() const;

    // Reports a template that cannot be read as an error, which ends the process.
    std::string loadTemplatePage() const;

    // The time as text in the local time zone, or the current time when zulu is not a time. A null zulu gives
    // the current time in another format.
    std::string localDateStringFromZulu(const char* zulu) const;

    // The page with its markers replaced by the call that starts the map and by the map's size.
    std::string insertMapsFunctionCall(const std::string& page, const CQuakeEvent& event,
                                       const platform::Size& frameSize) const;
};
