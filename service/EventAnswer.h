#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/XMLStream.h"
#include "service/EventElement.h"

// An answer on its way from an event service to the feed's parser. QuakeML 1.2 becomes QuakeML 1.0.1 while it
// arrives: an event is held until it ends, and of it only what the parser reads. Any other document stays as
// it is.
class EventAnswer : private platform::XMLStreamHandler {
  public:
    // What the document is by its root: of today (1.2), the parser's own (1.0, 1.1), or no QuakeML. Unknown
    // before the root.
    enum class Shape { Unknown, Today, Earlier, Other };

    EventAnswer();

    void take(std::string_view bytes);
    // To be called once all bytes are taken.
    void finish();

    Shape shape() const { return mShape; }
    // QuakeML as far as it has come, and once it is finished a whole document.
    bool isGood() const;
    // Whether the document declares attributes or entities of its own. QuakeML has none.
    bool hasDeclarations() const { return mStream.hasDeclarations(); }
    std::size_t documentSize() const { return mDocument.size(); }
    // The document for the parser. Of today's shape: empty unless isGood.
    std::string document() &&;

    // What the parser makes no earthquakes of: the answer of a service that has none.
    static std::string withoutEvents();

  private:
    enum class Place { Document, Root, EventParameters, Event, Origin, Magnitude, Quantity, Text };

    void startElement(const platform::XMLStartTag& tag) override;
    void endElement() override;
    void characters(std::string_view text) override;

    bool enter(const platform::XMLStartTag& tag);
    bool enterRoot(const platform::XMLStartTag& tag);
    bool enterEvent(const platform::XMLStartTag& tag);
    bool enterPartOfEvent(const platform::XMLStartTag& tag);
    bool enterQuantity(EventElement::Text* quantity);
    bool enterText(EventElement::Text& text);
    EventElement::Text* quantityOfOrigin(std::string_view name);
    bool go(Place place);
    void finishEvent();
    void keep(std::string_view bytes);

    platform::XMLStream mStream;
    Shape mShape = Shape::Unknown;
    bool mIsWellFormed = true;
    bool mIsTooLarge = false;
    std::string mDocument;  // as it came, or what is translated so far

    std::vector<Place> mPlaces{Place::Document};
    int mSkippedLevels = 0;  // open elements that do not count
    EventElement mEvent;
    EventElement::Text* mText = nullptr;  // in mEvent, takes the characters
    bool mHasValue = false;               // the open quantity
};
