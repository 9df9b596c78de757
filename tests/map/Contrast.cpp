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
// The boxes of the panel's lines, the credit, the scale and the key, in the same form.
constexpr char kTexts[] = R"js((() => {
  const {scale, key} = tellmarLayout.boxes;
  const lines = [...document.querySelectorAll("#panel p, #credit")].filter(({hidden}) => !hidden);
  return [...lines.map(line => [line.getBoundingClientRect(), line.id]), [scale, "scale"], [key, "key"]]
    .filter(([box]) => box).map(([box, id]) => [box.left, box.top, box.right, box.bottom, id].join(" ")).join("|");
})())js";
constexpr std::size_t kLeastPixels = 8;
constexpr double kLettersPart = 0.02;  // of a box's pixels are surely letters, and their brightest

double linear(int value) {
    const double part = value / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const Color& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double quantile(std::vector<double>& values, double part) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size()));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double median(std::vector<double>& values) { return quantile(values, 0.5); }

struct Stretch {
    double left = 0, top = 0, right = 0, bottom = 0;
    std::string name;
};

std::vector<Stretch> stretchesIn(const std::string& answer) {
    std::istringstream lines(answer.substr(1, answer.size() - 2));
    std::vector<Stretch> stretches;
    for (std::string line; std::getline(lines, line, '|');) {
        Stretch& stretch = stretches.emplace_back();
        std::istringstream fields(line);
        fields >> stretch.left >> stretch.top >> stretch.right >> stretch.bottom >> std::ws;
        std::getline(fields, stretch.name);
    }
    return stretches;
}

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

// The letters are lighter than what lies under them, and take less than half of the box.
double contrastIn(const Stretch& box, const Picture& picture) {
    std::vector<double> all;
    for (int y = std::max(0, int(box.top)); y < std::min<double>(box.bottom, picture.height); ++y)
        for (int x = std::max(0, int(box.left)); x < std::min<double>(box.right, picture.width); ++x)
            all.push_back(luminance(picture.at(x, y)));
    return (quantile(all, 1 - kLettersPart) + 0.05) / (median(all) + 0.05);
}

}  // namespace

std::vector<NameContrast> contrastsOfNames(MapPage& page) {
    const Picture picture = page.pictureNow();
    const std::string answer = page.evaluate(kMaskNames);
    const Picture mask = page.pictureNow();
    page.evaluate("document.getElementById('mask').remove()");
    std::vector<NameContrast> contrasts;
    for (const Stretch& stretch : stretchesIn(answer)) {
        const double ratio = contrastIn(stretch, picture, mask);
        if (contrasts.empty() || contrasts.back().name != stretch.name)
            contrasts.push_back({stretch.name, ratio});
        contrasts.back().ratio = std::min(contrasts.back().ratio, ratio);
    }
    return contrasts;
}

std::vector<NameContrast> contrastsOfTexts(MapPage& page) {
    const Picture picture = page.pictureNow();
    std::vector<NameContrast> contrasts;
    for (const Stretch& box : stretchesIn(page.evaluate(kTexts)))
        contrasts.push_back({box.name, contrastIn(box, picture)});
    return contrasts;
}
