#pragma once

#include <string>
#include <vector>

namespace standins {

// An event element of the feed; every member is the XML inside the element of its name.
struct FeedEvent {
    std::string type = "earthquake";
    std::string time = "<value>2011-02-21T23:51:42.34Z</value>";
    std::string latitude = "<value>-43.4935</value>";
    std::string longitude = "<value>172.713</value>";
    std::string depth = "<value>4.8</value>";
    std::string mag = "<value>6.1</value>";

    std::string xml() const;
};

// The whole document around event elements.
std::string feedOf(const std::string& events);

// Lets every URL answer with quakes of these magnitudes, in this order, latitudes counting up from 0.
void serveQuakes(const std::vector<double>& magnitudes);

}  // namespace standins
