#include "platform/ScreenSaverDefaults.h"
#include "service/AnswerCache.h"
#include "tests/fuzz/Fuzz.h"

namespace {

using platform::ScreenSaverDefaults;
namespace fs = std::filesystem;

void put(const std::string& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; }

ScreenSaverDefaults settings() { return ScreenSaverDefaults::defaultsForModuleWithName("module"); }

// What is stored is read back, the rest of the file counts as before, and a damaged file is set aside.
void checkSettings(std::string_view text) {
    static const bool isHome = setenv("XDG_CONFIG_HOME", fs::current_path().c_str(), 1) == 0;
    const std::string path = "tellmar/module.ini";
    fs::remove_all("tellmar");
    REQUIRE(isHome && fs::create_directory("tellmar"));
    put(path, text);
    ScreenSaverDefaults changed = settings();
    const int other = changed.integerForKey("Other");
    changed.setInteger(7, "Mine");
    REQUIRE(changed.synchronize() && settings().integerForKey("Mine") == 7);
    REQUIRE(settings().integerForKey("Other") == other);
    REQUIRE(!fs::exists(path + ".damaged") || contentsOf(path + ".damaged") == text);
}

// An answer is found as it was stored, but no more once a byte of its file is another.
void checkAnswer(std::string_view text) {
    const std::time_t time = text.empty() ? 0 : static_cast<unsigned char>(text.back());
    const KeptAnswer answer{
        takeLine(text), takeLine(text), time, {takeLine(text), takeLine(text)}, std::string(text)};
    fs::remove_all("kept");
    const AnswerCache cache("kept");
    REQUIRE(cache.store(answer));
    const auto found = cache.find(answer.url);
    if (answer.url.find('\r') != answer.url.npos) return;
    REQUIRE(found && found->document == answer.document && found->time == time);
    REQUIRE(cache.newest(found->service));
    const std::string path = fs::directory_iterator("kept")->path();
    std::string bytes = contentsOf(path);
    bytes[static_cast<std::size_t>(time) * bytes.size() / 256] ^= 1;
    put(path, bytes);
    REQUIRE(!cache.find(answer.url));
}

}  // namespace

void fuzz(std::string_view input) {
    checkSettings(input);
    checkAnswer(input);
}
