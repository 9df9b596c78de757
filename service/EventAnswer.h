#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/XMLStream.h"
#include "service/EventElement.h"

// An answer on its way from an event service to the feed's parser. Translates QuakeML 1.2 to QuakeML 1.0.1 as
// it arrives, holding one event at a time, and leaves out all but the earthquakes to show. Any other document
// stays as it is.
class EventAnswer : private platform::XMLStreamHandler {
  public:
    // The kind of document by its root: today's QuakeML (1.2), the parser's own (1.0, 1.1), or not QuakeML.
    // Unknown before the root.
    enum class Shape { Unknown, Today, Earlier, Other };

    EventAnswer();

    void take(std::string_view bytes);
    // Call this after the last bytes.
    void finish();

    Shape shape() const { return mShape; }
    // Whether the bytes so far are QuakeML, and after finish a complete document.
    bool isGood() const;
    // What is wrong if it is not good, human-readable.
    std::string failure() const;
    // Whether the document declares attributes or entities of its own. QuakeML has none.
    bool hasDeclarations() const { return mStream.hasDeclarations(); }
    std::size_t documentSize() const { return mDocument.size(); }
    // The document for the parser. Empty if it is of today's shape and not good.
    std::string document() &&;

    // The document for an answer without events.
    static std::string withoutEvents();

  private:
    enum class Place { Document, Root, EventParameters, Event, Origin, Quality, Magnitude, Quantity, Text };

    void startElement(const platform::XMLStartTag& tag) override;
    void endElement() override;
    void characters(std::string_view text) override;

    bool enter(const platform::XMLStartTag& tag);
    bool enterRoot(const platform::XMLStartTag& tag);
    bool enterEvent(const platform::XMLStartTag& tag);
    bool enterPartOfEvent(const platform::XMLStartTag& tag);
    bool enterPartOfOrigin(std::string_view name);
    bool enterPartOfMagnitude(std::string_view name);
    bool enterQuantity(EventElement::Text& quantity);
    bool enterText(EventElement::Text& text);
    bool go(Place place);
    void finishEvent();
    void keep(std::string_view bytes);

    platform::XMLStream mStream;
    Shape mShape = Shape::Unknown;
    bool mIsWellFormed = true;
    bool mIsTooLarge = false;
    std::string mDocument;  // as it came, or as far as it is translated

    std::vector<Place> mPlaces{Place::Document};
    int mSkippedLevels = 0;  // open elements that are ignored
    EventElement mEvent;
    EventElement::Text* mText = nullptr;  // in mEvent, takes the characters
    bool mHasValue = false;               // of the open quantity
};
