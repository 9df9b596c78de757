#include "tests/map/Contrast.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <utility>

#include "tests/map/MapPage.h"

namespace {

// Lays the same names over the page in red on blue and returns their stretches: left, top, right, bottom and
// the name.
constexpr char kMaskNames[] = R"js(await (async () => {
  const {drawLabels} = await import("bundle:///map/labels.js");
  const {width, height, labels} = tellmarLayout;
  const mask = Object.assign(document.createElement("canvas"), {width, height, id: "mask"});
  const context = mask.getContext("2d");
  context.fillStyle = "#00f";
  context.fillRect(0, 0, width, height);
  drawLabels(context, labels.map(label =>
    ({...label, leader: null, item: {...label.item, symbol: null, colour: "#f00"}})));
  mask.style = "position: fixed; left: 0; top: 0; z-index: 9";
  document.body.append(mask);
  await new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)));
  return labels.flatMap(({item, text, boxes}) => boxes.flatMap(({left, top, right, bottom}) =>
    Array.from({length: Math.ceil((right - left) / item.height)}, (_, i) => [left + i * item.height, top,
      Math.min(right, left + (i + 1) * item.height), bottom, text.replace("\n", " ")].join(" ")))).join("|");
})())js";
constexpr std::size_t kLeastPixels = 8;

double linear(int value) {
    const double part = value / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const Color& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Stretch {
    double left, top, right, bottom;
};

// Infinite where too little of a name lies in the stretch.
double contrastIn(const Stretch& stretch, const Picture& picture, const Picture& mask) {
    std::vector<double> text, around;
    for (int y = std::max(0, int(stretch.top)); y < std::min<double>(stretch.bottom, mask.height); ++y) {
        for (int x = std::max(0, int(stretch.left)); x < std::min<double>(stretch.right, mask.width); ++x) {
            const Color covered = mask.at(x, y);
            if (covered.red > 235) text.push_back(luminance(picture.at(x, y)));
            if (covered.red < 20) around.push_back(luminance(picture.at(x, y)));
        }
    }
    if (std::min(text.size(), around.size()) < kLeastPixels) return INFINITY;
    return (median(text) + 0.05) / (median(around) + 0.05);
}

}  // namespace

std::vector<NameContrast> contrastsOfNames(MapPage& page) {
    const Picture picture = page.pictureNow();
    std::string answer = page.evaluate(kMaskNames);
    const Picture mask = page.pictureNow();
    page.evaluate("document.getElementById('mask').remove()");
    std::vector<NameContrast> contrasts;
    std::istringstream stretches(answer.substr(1, answer.size() - 2));
    for (std::string line; std::getline(stretches, line, '|');) {
        std::istringstream fields(line);
        Stretch stretch{};
        std::string name;
        fields >> stretch.left >> stretch.top >> stretch.right >> stretch.bottom >> std::ws;
        std::getline(fields, name);
        const double ratio = contrastIn(stretch, picture, mask);
        if (contrasts.empty() || contrasts.back().name != name) contrasts.push_back({name, ratio});
        contrasts.back().ratio = std::min(contrasts.back().ratio, ratio);
    }
    return contrasts;
}
