#include "platform/XMLParser.h"
#include "service/EventAnswer.h"
#include "tests/fuzz/Fuzz.h"

namespace {

struct Result {
    EventAnswer::Shape shape;
    bool isGood, hasDeclarations;
    std::string document;

    bool operator==(const Result&) const = default;
};

// In pieces whose sizes grow by a step and then begin again.
Result translate(std::string_view bytes, std::size_t step) {
    EventAnswer answer;
    for (std::size_t size = 1, taken; !bytes.empty();
         size = (size + step) % 257, bytes.remove_prefix(taken)) {
        taken = step == 0 ? bytes.size() : std::min(size, bytes.size());
        answer.take(bytes.substr(0, taken));
    }
    answer.finish();
    return {answer.shape(), answer.isGood(), answer.hasDeclarations(), std::move(answer).document()};
}

}  // namespace

// The pieces do not matter, and what comes out is small and can be read. The last byte is the step.
void fuzz(std::string_view input) {
    if (input.empty()) return;
    const std::size_t step = static_cast<unsigned char>(input.back());
    input.remove_suffix(1);
    const Result whole = translate(input, 0);
    REQUIRE(translate(input, step) == whole);
    if (whole.shape != EventAnswer::Shape::Today || !whole.isGood) return;
    const Result again = translate(whole.document, step);
    REQUIRE(again.shape == EventAnswer::Shape::Earlier && again.isGood && again.document == whole.document);
    REQUIRE(platform::parseXML(whole.document));
    REQUIRE(whole.hasDeclarations || whole.document.size() <= 10 * input.size() + 200);
}
