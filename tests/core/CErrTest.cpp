#include "support/CErr.h"

#include <cstdlib>

#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::AlertType;
using standins::Alert, standins::desktop;
using testing::ElementsAre, testing::ExitedWithCode;

constexpr char kFunction[] = "void Some::Function(int)";

std::string report(const std::string& function, const std::string& code, const std::string& message) {
    return " Function  :  " + function + "\n Error Code:  " + code + "\n Message   :  " + message + "\n\n";
}

// A whole entry of the log.
std::string entry(const std::string& severity, const std::string& reportText) {
    const std::string separator = std::string(75, '#') + "\n";
    return "Mar  3. 2009, 14:05:09 -- " + severity +
           " LOGGED FOR PROCESS 'TELLMAR TESTS':\n\n"
           "Operating System: System\n"
           "         Version: 1049\n"
           "  Darwin Release: 1.2.3\n"
           "         Machine: hardware\n"
           "             CPU: CPU #1/2: TYPE=7;SUB_T=3, CPU #2/2: TYPE=18;SUB_T=10\n"
           "       Node Name: node\n\n" +
           separator + reportText + separator + "\n\n";
}

class CErrTest : public standins::Test {
  protected:
    ~CErrTest() override { Err.mBreakIntoDebugger = false; }

    const TemporaryFolder mCurrentFolder;
};

TEST_F(CErrTest, NothingToReportLeavesNoTrace) {
    Err.CheckNull(&Err, kFunction, "message");
    EXPECT_FALSE(Err.MinorError(0, kFunction, "message"));
    EXPECT_TRUE(Err.MinorError(1, kFunction, "\xC3\xA9t\xC3\xA9"));
    EXPECT_TRUE(desktop.alerts.empty());
    EXPECT_EQ(contentsOf("error.log"), "");
}

TEST_F(CErrTest, AWarningIsLoggedWhole) {
    std::ofstream("error.log") << "old text\n";
    const std::string function(300, 'f'), message(5000, 'm');
    EXPECT_TRUE(Err.MinorError(-43, "FSMakeFSRef() failed"));
    desktop.systemVersion = 1;  // asked for once
    EXPECT_TRUE(Err.MinorError(1, function.c_str(), message.c_str()));
    const std::string small = report("???", "-43", "FSMakeFSRef() failed");
    const std::string large = report(function, "1", message);
    EXPECT_EQ(contentsOf("error.log"), "old text\n" + entry("WARNING", small) + entry("WARNING", large));
    EXPECT_THAT(desktop.alerts,
                ElementsAre(Alert{AlertType::Caution, "???", small},
                            Alert{AlertType::Caution, function.substr(0, 255), large.substr(0, 255)}));
}

TEST_F(CErrTest, ALogThatCannotBeOpenedStopsNeitherAlertNorDebugger) {
    std::filesystem::create_directory("error.log");
    Err.mBreakIntoDebugger = true;
    EXPECT_TRUE(Err.MinorError(1, kFunction, "message"));
    EXPECT_EQ(desktop.alerts.size(), 1u);
    EXPECT_THAT(desktop.debugTexts, ElementsAre("<CheckError>\n" + report(kFunction, "1", "message")));
    EXPECT_EQ(desktop.debuggerStops, 1);
}

using CErrDeathTest = CErrTest;

TEST_F(CErrDeathTest, AFailureEndsTheProcessWithStatusZero) {
    const auto reportAtExit = [] {
        std::atexit([] {
            for (const Alert& alert : desktop.alerts) std::fprintf(stderr, "%s ", alert.text.c_str());
            std::fprintf(stderr, "beeps %d stops %d\n", desktop.beeps, desktop.debuggerStops);
        });
    };
    EXPECT_EXIT((reportAtExit(), Err.CheckError(-50, "bad parameter")), ExitedWithCode(0),
                "CheckError beeps 2 stops 0");
    EXPECT_EXIT((reportAtExit(), Err.CheckNull(nullptr, "message")), ExitedWithCode(0),
                "\\?\\?\\? beeps 2 stops 0");
    Err.mBreakIntoDebugger = true;
    EXPECT_EXIT((reportAtExit(), Err.CheckError(-50, kFunction, "")), ExitedWithCode(0), "^beeps 0 stops 1");
    EXPECT_EQ(contentsOf("error.log"), entry("ERROR", report("CheckError", "-50", "bad parameter")) +
                                           entry("ERROR", report("???", "<NULL>", "message")));
}

}  // namespace
