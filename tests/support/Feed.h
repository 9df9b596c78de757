#pragma once

#include <string>
#include <string_view>

inline std::string repeated(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

// A document type with the entities e0 to the last of count, each of them so many times the one before.
inline std::string entities(const std::string& root, int count, int times) {
    std::string type = "<!DOCTYPE " + root + " [<!ENTITY e0 \"ha\">";
    for (int i = 1; i < count; ++i)
        type += "<!ENTITY e" + std::to_string(i) + " \"" +
                repeated("&e" + std::to_string(i - 1) + ";", times) + "\">";
    return type + "]>";
}

inline std::string valueOf(const std::string& text) { return "<value>" + text + "</value>"; }
inline std::string valueOf(double number) { return valueOf(std::to_string(number)); }

// An event of the feed; every member is the XML inside the element of its name.
struct FeedEvent {
    std::string type = "earthquake";
    std::string time = valueOf("2011-02-21T23:51:42.34Z");
    std::string latitude = valueOf("-43.4935"), longitude = valueOf("172.713"), depth = valueOf("4.8");
    std::string mag = valueOf("6.1");

    std::string xml() const {
        return "<event><type>" + type + "</type><origin><time>" + time + "</time><latitude>" + latitude +
               "</latitude><longitude>" + longitude + "</longitude><depth>" + depth +
               "</depth></origin><magnitude><mag>" + mag + "</mag></magnitude></event>";
    }
};

// The whole document around events.
inline std::string feedOf(const std::string& events) {
    return "<?xml version=\"1.0\"?><quakeml><eventParameters>" + events + "</eventParameters></quakeml>";
}
