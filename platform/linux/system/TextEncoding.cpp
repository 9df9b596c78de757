#include "platform/TextEncoding.h"

#include <iconv.h>

#include <bit>
#include <cerrno>
#include <cstring>

namespace platform {

namespace {

class Converter {
  public:
    Converter(const char* from, const char* to) : mHandle(iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) iconv_close(mHandle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return mHandle != reinterpret_cast<iconv_t>(-1); }

    std::optional<std::string> convert(std::string_view text) {
        std::string result;
        char* in = const_cast<char*>(text.data());  // iconv does not change it
        std::size_t inLeft = text.size();
        while (inLeft > 0) {
            if (!step(&in, &inLeft, result)) return std::nullopt;
        }
        if (!step(nullptr, nullptr, result)) return std::nullopt;  // back to the initial shift state
        return result;
    }

  private:
    // Converts what fits into one buffer. Returns false for text that cannot be converted faithfully.
    bool step(char** in, std::size_t* inLeft, std::string& result) {
        char buffer[4096];
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        const std::size_t inexact = iconv(mHandle, in, inLeft, &out, &outLeft);
        result.append(buffer, out);
        return inexact == 0 || (inexact == static_cast<std::size_t>(-1) && errno == E2BIG);
    }

    iconv_t mHandle;
};

std::optional<std::string> nameOf(CFStringEncoding encoding) {
    switch (encoding) {
        case kCFStringEncodingMacRoman:
            return "MACINTOSH";
        case kCFStringEncodingUTF8:
            return "UTF-8";
        case kCFStringEncodingUnicode:
            return std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
        default:
            return std::nullopt;
    }
}

// UTF-7 has many forms for a text, and iconv escapes "<", so a document would lose its declaration.
bool isUTF7(const std::string& name) {
    return strcasestr(name.c_str(), "UTF-7") || strcasestr(name.c_str(), "UTF7");
}

// iconv reads an empty name as the locale's encoding, and a suffix after a slash as leave to be inexact.
bool isUsableName(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos && !isUTF7(name);
}

}  // namespace

std::optional<std::string> convertText(std::string_view text, CFStringEncoding from, CFStringEncoding to) {
    const std::optional<std::string> fromName = nameOf(from);
    const std::optional<std::string> toName = nameOf(to);
    if (!fromName || !toName) return std::nullopt;
    return convertText(text, *fromName, *toName);
}

std::optional<std::string> convertText(std::string_view text, const std::string& from,
                                       const std::string& to) {
    if (!isUsableName(from) || !isUsableName(to)) return std::nullopt;
    Converter converter(from.c_str(), to.c_str());
    if (!converter.isOpen()) return std::nullopt;
    return converter.convert(text);
}

}  // namespace platform
