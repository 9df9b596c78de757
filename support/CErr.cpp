#include "support/CErr.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string>

#include "platform/Alert.h"
#include "platform/Clock.h"
#include "platform/SystemInfo.h"
#include "support/OrvStr.h"
#include "support/OrvSystem.h"
#include "support/PascalString.h"

constinit CErr Err;

namespace {

constexpr char kSeparator[] = "###########################################################################\n";
constexpr char kLogName[] = "error.log";

bool isEmpty(const char* message) { return message == nullptr || static_cast<signed char>(message[0]) <= 0; }

// Month names in English, whatever the locale: the log has one format.
std::string dateText() {
    const std::tm now = platform::localTime(platform::currentTime());
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&now, "%b %e. %Y, %T");
    return text.str();
}

std::string upperCaseProcessName() {
    std::string name = OrvSystem::GetProcessName();
    OrvStr::strupr(name.data());
    return name;
}

std::string hexadecimal(std::int32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(value));
    return text;
}

std::string titleText(int kind) {
    const std::string severity = kind == CErr::kWarning ? "WARNING" : "ERROR";
    return dateText() + " -- " + severity + " LOGGED FOR PROCESS '" + upperCaseProcessName() + "':\n\n";
}

std::string systemText() {
    const platform::SystemNames names = platform::systemNames();
    return "Operating System: " + names.system + "\n" +                            //
           "         Version: " + hexadecimal(OrvSystem::GetOSVersion()) + "\n" +  //
           "  Darwin Release: " + names.release + "\n" +                           //
           "         Machine: " + names.machine + "\n" +                           //
           "             CPU: " + OrvSystem::GetCPUInfo() + "\n" +                 //
           "       Node Name: " + names.node + "\n\n";
}

std::string reportText(const std::string& function, const std::string& code, const std::string& message) {
    return " Function  :  " + function + "\n Error Code:  " + code + "\n Message   :  " + message + "\n\n";
}

// If the log cannot be opened, there is just no entry.
void appendToLog(int kind, const std::string& report) {
    std::FILE* log = std::fopen(kLogName, "a");
    if (log == nullptr) return;
    const std::string entry = titleText(kind) + systemText() + kSeparator + report + kSeparator + "\n\n";
    std::fwrite(entry.data(), 1, entry.size(), log);
    std::fclose(log);
}

}  // namespace

void CErr::CheckNull(const void* ptr, const char* function, const char* message) {
    if (ptr == nullptr) DoRequester(-1, function, message, kNullPointer);
}

void CErr::CheckNull(const void* ptr, const char* message) { CheckNull(ptr, nullptr, message); }

void CErr::CheckError(short code, const char* function, const char* message) {
    if (code == 0) return;
    if (!isEmpty(message)) DoRequester(code, function, message, kError);
    endProcess();
}

void CErr::CheckError(short code, const char* message) { CheckError(code, "CheckError", message); }

bool CErr::MinorError(short code, const char* function, const char* message) {
    if (code == 0) return false;
    if (!isEmpty(message)) DoRequester(code, function, message, kWarning);
    return true;
}

bool CErr::MinorError(short code, const char* message) { return MinorError(code, nullptr, message); }

void CErr::DoRequester(short code, const char* function, const char* message, int kind) {
    platform::beep();
    const std::string location = function == nullptr ? "???" : function;
    const std::string codeText = kind == kNullPointer ? "<NULL>" : std::to_string(code);
    const std::string report = reportText(location, codeText, message == nullptr ? "" : message);

    appendToLog(kind, report);
    if (mBreakIntoDebugger) platform::debugStr(PascalPart("<CheckError>\n" + report));
    platform::standardAlert(kind == kWarning ? platform::AlertType::Caution : platform::AlertType::Stop,
                            PascalPart(location), PascalPart(report));

    if (mBreakIntoDebugger) platform::debugger();
    if (kind == kWarning) return;
    platform::beep();
    std::exit(0);
}

void CErr::DebugPrint(const char*, ...) {}

void CErr::DebugPrintMP(const char*, ...) {}

int CErr::MPRemoteDebugStrProcedure(void* text) {
    if (text == nullptr) return 0;
    auto* pascal = static_cast<unsigned char*>(text);
    CopyCStringToPascal(static_cast<const char*>(text), pascal);
    platform::debugStr(PascalText(pascal));
    return 0;
}

void CErr::endProcess() {
    if (mBreakIntoDebugger) platform::debugger();
    std::exit(0);
}
