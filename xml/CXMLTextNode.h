#pragma once

#include "xml/CXMLLeafNode.h"

// A text, kept and returned in its escaped form. Of several ampersands only the first is escaped, so that a
// text from a document, escaped already, changes little; a double quote never is.
class CXMLTextNode : public CXMLLeafNode {
  public:
    // Shares the parser node of a text unless some of it needs escaping.
    explicit CXMLTextNode(const platform::CFXMLNode* text);
    // A text that is not of that encoding leaves the node without a string.
    CXMLTextNode(const char* text, platform::CFStringEncoding encoding);
    explicit CXMLTextNode(double value);  // five decimals
    CXMLTextNode(double value, int precision);
    explicit CXMLTextNode(int value);

    // As the library's atoi and atof, with the decimal point of every locale. 0 for a text that does not fit
    // kTextBufferSize.
    int GetValueAsInteger() override;
    double GetValueAsDouble();

    // Leaves the buffer untouched when the text does not fit.
    void GetValueAsString(char* buffer, int size) override;

    // Escapes in place; text has room for the result, at most six times as long.
    static void ReplaceSpecialCharacters(char* text);

  private:
    void InternalCreateWithCStr(const char* text, platform::CFStringEncoding encoding);
    void CreateWithString(std::optional<std::string> string);
};
