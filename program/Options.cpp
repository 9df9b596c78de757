#include "program/Options.h"

#include <charconv>
#include <cmath>

#include "platform/Bundle.h"
#include "platform/URLLoading.h"
#include "service/EventQuery.h"

const char kUsage[] =
    R"(Usage: tellmar [OPTION]...
Shows the latest strong earthquakes of the New Zealand region, each on a map.

Where:
  (no option)        in a window of 1280 x 720
  --fullscreen       on the whole screen
  --window-id ID     in the X11 window ID (decimal, or hexadecimal after 0x)
  --root             accepted for screen-saver hosts; XSCREENSAVER_WINDOW
                     names the window when --window-id does not
  --preview          as the small preview of a settings dialog

What:
  --demo             the sample feed that comes with the program
  --feed FILE|URL    this document in place of the service's answer
  --service URL      ask this FDSN event service in place of GeoNet's
  --no-cache         neither keep the service's answers nor use kept ones
  --list             print the earthquakes in the order they are shown in
  --configure        show the settings

  --register         add Tellmar to XScreenSaver's list (~/.xscreensaver)
  --unregister       take it out again

  --speed N          N times as many ticks, for demonstrations
  --verbose          a line on stderr for each fetch, tick, fade and page
  --version          print the version
  --help             print this text

In a window of its own, Escape or q leaves.
)";

namespace {

// Reads the options one by one; each option takes its value from the next argument or from behind a '='.
class Parser {
  public:
    explicit Parser(const std::vector<std::string>& arguments) : mArguments(arguments) {}

    Options parse() {
        while (mNext < mArguments.size()) parseOption(mArguments[mNext++]);
        return std::move(mOptions);
    }

  private:
    void parseOption(const std::string& argument) {
        const auto equals = argument.find('=');
        const std::string name = nameOf(argument.substr(0, equals));
        mValue = equals == std::string::npos ? std::nullopt : std::optional(argument.substr(equals + 1));

        if (name == "fullscreen")
            mOptions.fullscreen = true;
        else if (name == "preview")
            mOptions.preview = true;
        else if (name == "verbose")
            mOptions.verbose = true;
        else if (name == "demo")
            useSampleFeed();
        else if (name == "feed")
            parseFeed();
        else if (name == "service")
            parseService();
        else if (name == "no-cache")
            mOptions.noCache = true;
        else if (name == "speed")
            parseSpeed();
        else if (name == "window-id")
            parseWindow();
        else if (name == "list")
            mOptions.command = Options::Command::List;
        else if (name == "configure")
            mOptions.command = Options::Command::Configure;
        else if (name == "register")
            mOptions.command = Options::Command::Register;
        else if (name == "unregister")
            mOptions.command = Options::Command::Unregister;
        else if (name == "help" || name == "h")
            mOptions.command = Options::Command::Help;
        else if (name == "version")
            mOptions.command = Options::Command::Version;
        else if (name != "root")
            complain("unknown option " + argument);
    }

    // Hosts write options with one dash, users with two.
    static std::string nameOf(const std::string& argument) {
        if (argument.starts_with("--")) return argument.substr(2);
        return argument.starts_with("-") ? argument.substr(1) : std::string();
    }

    std::optional<std::string> takeValue(const std::string& option) {
        if (!mValue && mNext < mArguments.size()) mValue = mArguments[mNext++];
        if (!mValue) complain(option + " needs a value");
        return mValue;
    }

    void useSampleFeed() {
        const std::string path = platform::pathForResource("sample-feed.xml");
        if (path.empty()) complain("the sample feed is missing");
        mOptions.feed = platform::fileURLWithPath(path.empty() ? "sample-feed.xml" : path);
    }

    void parseFeed() {
        const auto value = takeValue("--feed");
        if (!value) return;
        const bool isURL = value->find("://") != std::string::npos;
        mOptions.feed = isURL ? *value : platform::fileURLWithPath(*value);
    }

    void parseService() {
        const auto value = takeValue("--service");
        if (!value) return;
        if (isEventServiceAddress(*value))
            mOptions.service = *value;
        else
            complain("--service takes the http or https address of an event service, not " + *value);
    }

    void parseSpeed() {
        const auto value = takeValue("--speed");
        if (!value) return;
        double speed = 0;
        const auto end = value->data() + value->size();
        const auto [rest, error] = std::from_chars(value->data(), end, speed);
        if (error == std::errc() && rest == end && std::isfinite(speed) && speed > 0 && speed <= 1000)
            mOptions.speed = speed;
        else
            complain("--speed takes a number above 0 and up to 1000, not " + *value);
    }

    void parseWindow();
    void complain(const std::string& complaint) { mOptions.complaints.push_back(complaint); }

    const std::vector<std::string>& mArguments;
    std::size_t mNext = 0;
    std::optional<std::string> mValue;
    Options mOptions;
};

std::optional<unsigned long> windowNumber(const std::string& text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const char* begin = text.data() + (isHex ? 2 : 0);
    const char* end = text.data() + text.size();
    unsigned long number = 0;
    const auto [rest, error] = std::from_chars(begin, end, number, isHex ? 16 : 10);
    return error == std::errc() && rest == end && number != 0 ? std::optional(number) : std::nullopt;
}

void Parser::parseWindow() {
    const auto value = takeValue("--window-id");
    if (!value) return;
    if (const auto number = windowNumber(*value))
        mOptions.hostWindow = number;
    else
        complain("--window-id takes the number of a window, not " + *value);
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments, const char* hostEnvironment) {
    Options options = Parser(arguments).parse();
    if (options.hostWindow || !hostEnvironment || !*hostEnvironment) return options;
    options.hostWindow = windowNumber(hostEnvironment);
    if (!options.hostWindow)
        options.complaints.push_back(std::string("XSCREENSAVER_WINDOW is no window number: ") +
                                     hostEnvironment);
    return options;
}
