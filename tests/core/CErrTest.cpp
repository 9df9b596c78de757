#include "support/CErr.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>

#include "platform/Files.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/Alert.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::AlertType;
using standins::alertRecord;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;

constexpr char kFunction[] = "void Some::Function(int)";

std::string report(const std::string& function, const std::string& code, const std::string& message) {
    return " Function  :  " + function + "\n Error Code:  " + code + "\n Message   :  " + message + "\n\n";
}

// A whole entry of the log.
std::string entry(const std::string& severity, const std::string& reportText) {
    const std::string separator = std::string(75, '#') + "\n";
    return "Mar  3. 2009, 14:05:09 -- " + severity +
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

class CErrTest : public standins::Test {
  protected:
    ~CErrTest() override { Err.mBreakIntoDebugger = false; }

    static std::string log() {
        std::string text;
        platform::readFile("error.log", text);
        return text;
    }
    static void expectNoTrace() {
        EXPECT_EQ(alertRecord().beeps, 0);
        EXPECT_THAT(alertRecord().alerts, IsEmpty());
        EXPECT_EQ(log(), "");
    }

    TemporaryFolder mCurrentFolder;
};

TEST_F(CErrTest, WhatIsNoFailureLeavesNoTrace) {
    Err.CheckNull(&Err, kFunction, "message");
    Err.CheckError(0, kFunction, "message");
    EXPECT_FALSE(Err.MinorError(0, kFunction, "message"));
    Err.DebugPrint("100% s");
    expectNoTrace();
}

TEST_F(CErrTest, AMessageWithoutAFirstASCIIByteIsNotReported) {
    EXPECT_TRUE(Err.MinorError(1, kFunction, ""));
    EXPECT_TRUE(Err.MinorError(1, kFunction, "\xC3\xA9t\xC3\xA9"));
    expectNoTrace();
}

TEST_F(CErrTest, AWarningIsAppendedToTheLogShownAndReturnedFrom) {
    platform::writeFileAtomically("error.log", "old text\n");
    EXPECT_TRUE(Err.MinorError(-43, kFunction, "FSMakeFSRef() failed"));
    EXPECT_TRUE(Err.MinorError(2, "two"));
    const std::string one = report(kFunction, "-43", "FSMakeFSRef() failed"), two = report("???", "2", "two");
    EXPECT_EQ(log(), "old text\n" + entry("WARNING", one) + entry("WARNING", two));
    EXPECT_THAT(alertRecord().alerts, ElementsAre(standins::Alert{AlertType::Caution, kFunction, one},
                                                  standins::Alert{AlertType::Caution, "???", two}));
    EXPECT_EQ(alertRecord().beeps, 2);
    EXPECT_EQ(alertRecord().debuggerStops, 0);
}

TEST_F(CErrTest, TheAlertIsCutAndTheLogIsNot) {
    const std::string function(300, 'f'), message(5000, 'm'), text = report(function, "1", message);
    Err.MinorError(1, function.c_str(), message.c_str());
    EXPECT_EQ(log(), entry("WARNING", text));
    EXPECT_THAT(alertRecord().alerts, ElementsAre(standins::Alert{AlertType::Caution, function.substr(0, 255),
                                                                  text.substr(0, 255)}));
}

TEST_F(CErrTest, ALogThatCannotBeOpenedDoesNotStopTheAlert) {
    std::filesystem::create_directory("error.log");
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
        std::fprintf(stderr, "beeps %d stops %d alerts", alertRecord().beeps, alertRecord().debuggerStops);
        for (const standins::Alert& alert : alertRecord().alerts)
            std::fprintf(stderr, alert.type == AlertType::Stop ? " stop %s" : " %s", alert.text.c_str());
        std::fprintf(stderr, "\n");
    });
}

using CErrDeathTest = CErrTest;

TEST_F(CErrDeathTest, AFailureIsReportedAndEndsTheProcessWithStatusZero) {
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckError(-50, "bad parameter")), ExitedWithCode(0),
                "beeps 2 stops 0 alerts stop CheckError");
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckNull(nullptr, "message")), ExitedWithCode(0),
                "beeps 2 stops 0 alerts stop \\?\\?\\?");
    EXPECT_EQ(log(), entry("ERROR", report("CheckError", "-50", "bad parameter")) +
                         entry("ERROR", report("???", "<NULL>", "message")));
}

TEST_F(CErrDeathTest, AnErrorWithAnEmptyMessageEndsTheProcessSilently) {
    Err.mBreakIntoDebugger = true;
    EXPECT_EXIT((tellRecordAtExit(), Err.CheckError(-50, kFunction, "")), ExitedWithCode(0),
                "beeps 0 stops 1 alerts\n");
    EXPECT_EQ(log(), "");
}

}  // namespace
