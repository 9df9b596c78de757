#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/Bundle.h"
#include "platform/Log.h"
#include "program/CheckCommand.h"
#include "program/CoverTask.h"
#include "program/EarthquakesScript.h"
#include "program/HelpText.h"
#include "program/IdleCommand.h"
#include "program/ListCommand.h"
#include "program/Options.h"
#include "program/RegisterCommand.h"
#include "program/Restart.h"
#include "program/SaverCommand.h"
#include "service/EventFeed.h"

namespace {

// Complaints stop a program that a user started; a saver that a host started runs anyway.
bool acceptComplaints(const Options& options) {
    for (const std::string& complaint : options.complaints) platform::log(complaint);
    return options.complaints.empty() || options.hostWindow || std::getenv("XSCREENSAVER_WINDOW");
}

// For tests. Without the variable, or when it is not a positive number, a minute is one.
void setMinute(EventFeed::Source& source) {
    const char* value = std::getenv("TELLMAR_MINUTE_MS");
    const std::string_view text = value ? value : "";
    int milliseconds = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), milliseconds);
    if (error == std::errc() && rest == text.data() + text.size() && milliseconds > 0)
        source.minuteMilliseconds = milliseconds;
}

EventFeed::Source sourceOf(const Options& options) {
    EventFeed::Source source{
        .document = options.feed, .isSample = options.demo, .keepsAnswers = !options.noCache};
    if (!options.service.empty()) source.service = options.service;
    setMinute(source);
    return source;
}

// From now on the feed answers the quake list's query and tells the pages what is shown. It must outlive
// them.
void serve(EventFeed& feed) {
    platform::setURLResponder(
        [&feed](const std::string& url, std::string& data) { return feed.answer(url, data); });
    platform::setGeneratedResource("earthquakes.js", [&feed] { return earthquakesScript(feed); });
}

// The command's status, unless what it printed could not be written.
int written(int status) {
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
    platform::log("cannot write to standard output");
    return 1;
}

int print(const char* text) {
    std::fputs(text, stdout);
    return written(0);
}

int registerWithNextStep() {
    const int status = registerSaver(xscreensaverFile(), saverCommand());
    if (status == 0) std::fputs(nextStep(), stdout);
    return status;
}

int run(const Options& options, EventFeed& feed) {
    if (coverTask() == CoverTask::Check) return checkQuakes(feed);
    switch (options.command) {
        case Options::Command::List:
            return listQuakes(feed);
        case Options::Command::Configure:
            return runSettings();
        case Options::Command::Register:
            return registerWithNextStep();
        case Options::Command::Unregister:
            return unregisterSaver(xscreensaverFile());
        case Options::Command::Idle:
            return runIdleCommand(options.idle);
        default:
            return runSaver(options, feed);
    }
}

}  // namespace

int main(int argc, char** argv) {
    prepareToRestart();
    // Messages in the user's language, but always a decimal point: the page and the feed need it.
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_NUMERIC, "C");

    const Options options = parseOptions({argv + 1, argv + argc}, std::getenv("XSCREENSAVER_WINDOW"));
    if (options.command == Options::Command::Help) return print(helpText().c_str());
    if (options.command == Options::Command::Version) return print("tellmar " TELLMAR_VERSION "\n");
    if (!acceptComplaints(options)) {
        std::fputs("Try tellmar --help.\n", stderr);
        return 2;
    }

    platform::setVerbose(options.verbose);
    EventFeed feed(sourceOf(options));
    serve(feed);
    return written(run(options, feed));
}
