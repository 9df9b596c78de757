#include "bench/QuakeMLGenerator.h"

#include <cstdio>
#include <iterator>
#include <random>

namespace {

constexpr int kPicksPerEvent = 20;
constexpr const char* kStations[] = {"THZ", "RPZ", "ODZ", "LTZ", "BFZ", "WEL", "KHZ", "URZ"};

using Random = std::minstd_rand;

double between(Random& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}

template <typename... Values>
void print(std::string& out, const char* format, Values... values) {
    char piece[1024];
    out.append(piece, static_cast<std::size_t>(std::snprintf(piece, sizeof piece, format, values...)));
}

void addTime(std::string& out, Random& random) {
    print(out, "<time><value>2009-07-%02dT%02d:%02d:%06.3fZ</value></time>", int(random() % 28) + 1,
          int(random() % 24), int(random() % 60), between(random, 0, 59.999));
}

void addQuantity(std::string& out, const char* name, double value, double uncertainty) {
    print(out, "<%s><value>%.5f</value><uncertainty>%.5f</uncertainty></%s>", name, value, uncertainty, name);
}

void addOrigin(std::string& out, Random& random, int id) {
    print(out, "<origin publicID=\"smi:geonet.org.nz/ori/%d/GROPE\">", id);
    out += "<type>hypocenter</type><evaluationMode>manual</evaluationMode>";
    addTime(out, random);
    addQuantity(out, "latitude", between(random, -48, -34), 0.00702);
    addQuantity(out, "longitude", between(random, 165, 180), 0.00849);
    addQuantity(out, "depth", between(random, 1, 300), 1.6211);
    out += "<depthType>from location</depthType></origin>";
}

void addPick(std::string& out, Random& random, int id) {
    print(out, "<pick publicID=\"smi:geonet.org.nz/pick/%d\">", id);
    addTime(out, random);
    print(out, "<waveformID stationCode=\"%s\" networkCode=\"NZ\"/></pick>",
          kStations[random() % std::size(kStations)]);
}

void addMagnitude(std::string& out, Random& random, int id) {
    print(out, "<magnitude publicID=\"smi:geonet.org.nz/mag/%d/GROPE/ML\">", id);
    addQuantity(out, "mag", between(random, 4, 8), 0.295);
    out += "<type>ML</type><stationCount>7</stationCount></magnitude>";
}

void addEvent(std::string& out, Random& random, int index) {
    const int id = 3'000'000 + index;
    print(out, "<event publicID=\"smi:geonet.org.nz/event/%dg\"><type>earthquake</type>\n", id);
    addOrigin(out, random, id);
    for (int pick = 0; pick < kPicksPerEvent; ++pick) addPick(out, random, id * kPicksPerEvent + pick);
    addMagnitude(out, random, id);
    out += "</event>\n";
}

}  // namespace

std::string generateQuakeML(int eventCount) {
    Random random(1);
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.0\">"
        "<eventParameters publicID=\"smi:geonet.org.nz/quakeml/1.0.1\">\n";
    for (int index = 0; index < eventCount; ++index) addEvent(out, random, index);
    return out += "</eventParameters></quakeml>\n";
}
