#include "program/Options.h"

#include <getopt.h>

#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "idle/IdleTime.h"
#include "platform/Bundle.h"
#include "platform/URLLoading.h"
#include "program/OptionTable.h"
#include "service/EventQuery.h"

namespace {

// What getopt_long_only returns for the table's first option, for an error and for a non-option argument.
constexpr int kFirstOption = 256;
constexpr int kError = '?';
constexpr int kOtherArgument = 1;

// No short options, and all arguments in their order, whether or not POSIXLY_CORRECT is set.
constexpr char kInOrder[] = "-";

const OptionEntry& entryOf(int code) { return optionTable()[code - kFirstOption]; }

int valueRule(const OptionEntry& entry) {
    if (takesOptionalValue(entry)) return optional_argument;
    return entry.valueName ? required_argument : no_argument;
}

std::vector<option> optionsForGetopt() {
    std::vector<option> options;
    int code = kFirstOption;
    for (const OptionEntry& entry : optionTable())
        options.push_back({entry.name, valueRule(entry), nullptr, code++});
    options.push_back({});
    return options;
}

std::vector<char*> argvOf(std::vector<std::string>& arguments) {
    static char program[] = "tellmar";
    std::vector<char*> argv = {program};
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    return argv;
}

std::string optionsStartingWith(std::string_view prefix) {
    std::string options;
    for (const OptionEntry& entry : optionTable())
        if (std::string_view(entry.name).starts_with(prefix))
            options += std::string(options.empty() ? "--" : " or --") + entry.name;
    return options;
}

std::optional<unsigned long> windowNumber(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const char* begin = text.data() + (isHex ? 2 : 0);
    const char* end = text.data() + text.size();
    unsigned long number = 0;
    const auto [rest, error] = std::from_chars(begin, end, number, isHex ? 16 : 10);
    return error == std::errc() && rest == end && number != 0 ? std::optional(number) : std::nullopt;
}

class Parser {
  public:
    Options parse(std::vector<std::string> arguments) {
        const std::vector<option> known = optionsForGetopt();
        const std::vector<char*> argv = argvOf(arguments);
        const int argc = static_cast<int>(arguments.size()) + 1;
        opterr = 0;
        optind = 0;  // makes getopt start over
        int next = 1;
        for (int code; (code = getopt_long_only(argc, argv.data(), kInOrder, known.data(), nullptr)) != -1;) {
            parseArgument(code, argv[next]);
            next = optind;
        }
        for (next = optind; next < argc; ++next) parseArgument(kOtherArgument, argv[next]);
        return std::move(mOptions);
    }

  private:
    void parseArgument(int code, const std::string& argument) {
        const bool continuesIdle = std::exchange(mIdleMayContinue, false);
        if (code == kOtherArgument && continuesIdle) return parseIdle(argument);
        mWritten = argument.substr(0, argument.find('='));
        if (code == kOtherArgument)
            complain("unexpected argument: " + argument);
        else if (code == kError)
            complainOfError(argument);
        else
            parseOption(entryOf(code));
    }

    // getopt sets optopt to the option's code, or to 0 when the name matches no option or several.
    void complainOfError(const std::string& argument) {
        if (optopt != 0)
            return complain(mWritten + (entryOf(optopt).valueName ? " needs a value" : " takes no value"));
        const std::string name = mWritten.substr(mWritten.starts_with("--") ? 2 : 1);
        const std::string meanings = name.empty() ? "" : optionsStartingWith(name);
        complain(meanings.empty() ? "unknown option: " + argument : mWritten + " could mean " + meanings);
    }

    void parseOption(const OptionEntry& entry) {
        const std::string value = optarg ? optarg : "";
        if (entry.valueName && value.empty() && !takesOptionalValue(entry))
            complain(mWritten + " needs a value");
        else
            apply(entry.option, value);
    }

    void apply(Option option, const std::string& value) {
        switch (option) {
            case Option::Fullscreen:
                return turnOn(mOptions.fullscreen);
            case Option::Kiosk:
                mOptions.kiosk = true;
                return turnOn(mOptions.fullscreen);
            case Option::WindowId:
                return parseWindow(value);
            case Option::Root:
                return;
            case Option::Preview:
                return turnOn(mOptions.preview);
            case Option::Demo:
                return useSampleFeed();
            case Option::Feed:
                return parseFeed(value);
            case Option::Service:
                return parseService(value);
            case Option::NoCache:
                return turnOn(mOptions.noCache);
            case Option::Speed:
                return parseSpeed(value);
            case Option::List:
                return choose(Options::Command::List);
            case Option::Configure:
                return choose(Options::Command::Configure);
            case Option::Register:
                return choose(Options::Command::Register);
            case Option::Unregister:
                return choose(Options::Command::Unregister);
            case Option::Idle:
                return chooseIdle(value);
            case Option::Version:
                return choose(Options::Command::Version);
            case Option::Help:
                return choose(Options::Command::Help);
            case Option::Verbose:
                return turnOn(mOptions.verbose);
        }
    }

    void turnOn(bool& flag) { flag = true; }
    void choose(Options::Command command) { mOptions.command = command; }

    void useSampleFeed() {
        const std::string path = platform::pathForResource("sample-feed.xml");
        if (path.empty()) complain("the sample feed is missing");
        mOptions.feed = platform::fileURLWithPath(path.empty() ? "sample-feed.xml" : path);
        mOptions.demo = true;
    }

    void parseFeed(const std::string& value) {
        const bool isURL = value.find("://") != std::string::npos;
        mOptions.feed = isURL ? value : platform::fileURLWithPath(value);
        mOptions.demo = false;
    }

    void parseService(const std::string& value) {
        if (isEventServiceAddress(value))
            mOptions.service = value;
        else
            complain(mWritten + " takes the http or https address of an event service, not " + value);
    }

    void parseSpeed(const std::string& value) {
        double speed = 0;
        const auto end = value.data() + value.size();
        const auto [rest, error] = std::from_chars(value.data(), end, speed);
        if (error == std::errc() && rest == end && std::isfinite(speed) && speed > 0 && speed <= 1000)
            mOptions.speed = speed;
        else
            complain(mWritten + " takes a number above 0 and at most 1000, not " + value);
    }

    // getopt takes an optional value only after an equals sign; the next argument may be one as well.
    void chooseIdle(const std::string& value) {
        choose(Options::Command::Idle);
        mOptions.idle.clear();
        mIdleMayContinue = value.empty();
        if (!value.empty()) parseIdle(value);
    }

    void parseIdle(const std::string& value) {
        const auto time = parseMinutes(value);
        if (value == "off" || (time && time->count() > 0))
            mOptions.idle = value;
        else
            complain(mWritten + " takes a number of minutes from 0.01 to 1440, or off, not " + value);
    }

    void parseWindow(const std::string& value) {
        if (const auto number = windowNumber(value))
            mOptions.hostWindow = number;
        else
            complain(mWritten + " takes a window ID, not " + value);
    }

    void complain(const std::string& complaint) { mOptions.complaints.push_back(complaint); }

    std::string mWritten;           // the option as the user wrote it, without its value
    bool mIdleMayContinue = false;  // the next argument may be the value of --idle
    Options mOptions;
};

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments, const char* hostEnvironment) {
    Options options = Parser().parse(arguments);
    if (options.hostWindow || !hostEnvironment || !*hostEnvironment) return options;
    options.hostWindow = windowNumber(hostEnvironment);
    if (!options.hostWindow)
        options.complaints.push_back(std::string("XSCREENSAVER_WINDOW is not a window ID: ") +
                                     hostEnvironment);
    return options;
}
