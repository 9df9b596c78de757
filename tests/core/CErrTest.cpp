#include "support/CErr.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>

#include "platform/Clock.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/Alert.h"

namespace {

namespace fs = std::filesystem;
using platform::AlertType;
using standins::alertRecord;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;

constexpr char kFunction[] = "void Some::Function(int)";

class CErrTest : public testing::Test {
  protected:
    CErrTest() { standins::resetAlerts(); }
    ~CErrTest() override { Err.mBreakIntoDebugger = false; }

    static std::string logText() {
        std::ifstream file("error.log");
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    static std::string report(const std::string& function, const std::string& code,
                              const std::string& message) {
        return " Function  :  " + function + "\n Error Code:  " + code + "\n Message   :  " + message +
               "\n\n";
    }

    // A whole entry of the log; the title without its date.
    static std::string entry(const std::string& severity, const std::string& reportText) {
        const std::string separator = std::string(75, '#') + "\n";
        return " -- " + severity +
               " LOGGED FOR PROCESS 'TELLMAR TESTS':\n"
               "\n"
               "Operating System: System\n"
               "         Version: 1049\n"
               "  Darwin Release: 1.2.3\n"
               "         Machine: hardware\n"
               "             CPU: CPU #1/2: TYPE=7;SUB_T=3, CPU #2/2: TYPE=18;SUB_T=10\n"
               "       Node Name: node\n"
               "\n" +
               separator + reportText + separator + "\n\n";
    }

    // The log with each line's leading date taken off; checks its form, "Feb  3. 2026, 04:05:06".
    static std::string logWithoutDates() {
        std::istringstream log(logText());
        std::string result;
        for (std::string line; std::getline(log, line); result += line + "\n") {
            const std::size_t title = line.find(" -- ");
            if (title == std::string::npos) continue;
            EXPECT_THAT(line.substr(0, title),
                        testing::MatchesRegex("[A-Z][a-z][a-z] [ 123][0-9]. [0-9]{4}, [0-9:]{8}"));
            line.erase(0, title);
        }
        return result;
    }

    TemporaryFolder mCurrentFolder;
};

using CErrDeathTest = CErrTest;

TEST_F(CErrTest, WhatIsNoFailureLeavesNoTrace) {
    const int value = 0;
    Err.CheckNull(&value, kFunction, "message");
    Err.CheckNull(&value, "message");
    Err.CheckError(0, kFunction, "message");
    Err.CheckError(0, "message");
    EXPECT_FALSE(Err.MinorError(0, kFunction, "message"));
    EXPECT_FALSE(Err.MinorError(0, "message"));
    Err.DebugPrint("100% s");
    EXPECT_EQ(alertRecord().beeps, 0);
    EXPECT_THAT(alertRecord().alerts, IsEmpty());
    EXPECT_FALSE(fs::exists("error.log"));
}

TEST_F(CErrTest, AWarningIsLoggedShownAndReturnedFrom) {
    EXPECT_TRUE(Err.MinorError(-43, kFunction, "FSMakeFSRef() failed"));
    const std::string text = report(kFunction, "-43", "FSMakeFSRef() failed");
    EXPECT_EQ(logWithoutDates(), entry("WARNING", text));
    EXPECT_THAT(alertRecord().alerts, ElementsAre(standins::Alert{AlertType::Caution, kFunction, text}));
    EXPECT_EQ(alertRecord().beeps, 1);
    EXPECT_EQ(alertRecord().debuggerStops, 0);
}

TEST_F(CErrTest, TheTitleCarriesTheLocalTime) {
    Err.MinorError(1, "message");
    const std::tm now = platform::localTime(platform::currentTime());
    char date[32];
    std::strftime(date, sizeof date, "%b %e. %Y, ", &now);
    EXPECT_EQ(logText().substr(0, std::string(date).size()), date);
}

TEST_F(CErrTest, EntriesAreAppendedToWhatIsThere) {
    std::ofstream("error.log") << "old text\n";
    Err.MinorError(1, "one");
    Err.MinorError(2, "two");
    EXPECT_EQ(logWithoutDates(), "old text\n" + entry("WARNING", report("???", "1", "one")) +
                                     entry("WARNING", report("???", "2", "two")));
    ASSERT_EQ(alertRecord().alerts.size(), 2u);
    EXPECT_EQ(alertRecord().alerts[0].text, "???");
}

TEST_F(CErrTest, AMessageWithoutAFirstASCIIByteIsNotReported) {
    EXPECT_TRUE(Err.MinorError(1, kFunction, ""));
    EXPECT_TRUE(Err.MinorError(1, kFunction, "\xC3\xA9t\xC3\xA9"));
    EXPECT_EQ(alertRecord().beeps, 0);
    EXPECT_THAT(alertRecord().alerts, IsEmpty());
    EXPECT_FALSE(fs::exists("error.log"));
}

TEST_F(CErrTest, TheAlertIsCutAndTheLogIsNot) {
    const std::string function(300, 'f'), message(5000, 'm');
    Err.MinorError(1, function.c_str(), message.c_str());
    const std::string text = report(function, "1", message);
    EXPECT_EQ(logWithoutDates(), entry("WARNING", text));
    EXPECT_THAT(alertRecord().alerts, ElementsAre(standins::Alert{AlertType::Caution, function.substr(0, 255),
                                                                  text.substr(0, 255)}));
}

TEST_F(CErrTest, ALogThatCannotBeOpenedDoesNotStopTheAlert) {
    fs::create_directory("error.log");
    EXPECT_TRUE(Err.MinorError(1, kFunction, "message"));
    EXPECT_EQ(alertRecord().alerts.size(), 1u);
}

TEST_F(CErrTest, AReportStopsInTheDebuggerWhereThatIsWanted) {
    Err.mBreakIntoDebugger = true;
    Err.MinorError(1, kFunction, "message");
    EXPECT_THAT(alertRecord().debugTexts, ElementsAre("<CheckError>\n" + report(kFunction, "1", "message")));
    EXPECT_EQ(alertRecord().debuggerStops, 1);
    EXPECT_EQ(alertRecord().alerts.size(), 1u);
}

TEST_F(CErrTest, TheDebugCallbackMakesAPascalStringInPlace) {
    char text[] = "stop";
    EXPECT_EQ(CErr::MPRemoteDebugStrProcedure(text), 0);
    EXPECT_EQ(std::string(text, 5), "\4stop");
    EXPECT_THAT(alertRecord().debugTexts, ElementsAre("stop"));
}

// The child that ends tells on stderr what it recorded.
void tellRecordAtExit() {
    std::atexit([] {
        const standins::AlertRecord& record = alertRecord();
        std::string text = "beeps " + std::to_string(record.beeps) + " stops " +
                           std::to_string(record.debuggerStops) + " alerts";
        for (const standins::Alert& alert : record.alerts) {
            text += (alert.type == AlertType::Stop ? " stop " : " caution ") + alert.text;
        }
        std::fprintf(stderr, "%s\n", text.c_str());
    });
}

TEST_F(CErrDeathTest, AnErrorEndsTheProcessWithStatusZero) {
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckError(-50, "bad parameter")), ExitedWithCode(0),
                "beeps 2 stops 0 alerts stop CheckError");
    EXPECT_EQ(logWithoutDates(), entry("ERROR", report("CheckError", "-50", "bad parameter")));
}

TEST_F(CErrDeathTest, ANullPointerEndsTheProcessAndItsCodeIsNotShown) {
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckNull(nullptr, "message")), ExitedWithCode(0),
                "beeps 2 stops 0 alerts stop \\?\\?\\?");
    EXPECT_EQ(logWithoutDates(), entry("ERROR", report("???", "<NULL>", "message")));
}

TEST_F(CErrDeathTest, AnErrorWithAnEmptyMessageEndsTheProcessSilently) {
    Err.mBreakIntoDebugger = true;
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckError(-50, kFunction, "")), ExitedWithCode(0),
                "beeps 0 stops 1 alerts\n");
    EXPECT_FALSE(fs::exists("error.log"));
}

}  // namespace
