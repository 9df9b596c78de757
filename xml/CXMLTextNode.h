#pragma once

#include "xml/CXMLLeafNode.h"

// A text, kept and returned in escaped form. Only the first ampersand is escaped, so a text from a document,
// which is escaped already, changes little. Double quotes are never escaped.
class CXMLTextNode : public CXMLLeafNode {
  public:
    // Shares the parser node unless its text needs escaping.
    explicit CXMLTextNode(const platform::CFXMLNode* text);
    // A text that is not valid in that encoding leaves the node without a string.
    CXMLTextNode(const char* text, platform::CFStringEncoding encoding);
    explicit CXMLTextNode(double value);  // five decimals
    CXMLTextNode(double value, int precision);
    explicit CXMLTextNode(int value);

    // Like atoi and atof, but with a decimal point in every locale. 0 for a text that does not fit
    // kTextBufferSize.
    int GetValueAsInteger() override;
    double GetValueAsDouble();

    // Leaves the buffer untouched if the text does not fit.
    void GetValueAsString(char* buffer, int size) override;

    // Escapes in place. text must have room for the result, at most six times as long.
    static void ReplaceSpecialCharacters(char* text);

  private:
    void InternalCreateWithCStr(const char* text, platform::CFStringEncoding encoding);
    void CreateWithString(std::optional<std::string> string);
};
