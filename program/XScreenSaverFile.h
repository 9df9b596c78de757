#pragma once

#include <string>
#include <utility>

// The text of XScreenSaver's ~/.xscreensaver, of which only Tellmar's place in the list of programs changes:
// every other byte stays. XScreenSaver shows its own savers whether the file lists them or not.
class XScreenSaverFile {
  public:
    enum class Place { None, Listed, SwitchedOff };

    explicit XScreenSaverFile(std::string text) : mText(std::move(text)) {}

    const std::string& text() const { return mText; }

    // XScreenSaver cannot read a list of several lines that end in CR LF.
    bool hasForeignLineEnds() const;

    Place place() const;

    // Adds the command at the end of the list, so that the savers before it keep their numbers. A file
    // without a list gets one.
    void add(const std::string& command);

    // Takes Tellmar out, and the list too if that leaves it empty and the file has no other.
    void remove();

    // Whether a saver was chosen by its number in the list, and adding or removing Tellmar gives it another.
    bool addingMovesChoice() const;
    bool removingMovesChoice() const;

  private:
    std::string mText;
};
