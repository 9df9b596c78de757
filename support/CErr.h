#pragma once

// Reports failures the one way of the system: a beep, an entry in "error.log" in the current directory and an
// alert. Null pointers and errors then end the process with status 0; warnings return. Not reentrant.
//
// function names where the failure happened, as a full signature; null shows as "???". A message whose first
// byte is not from 1 to 127 counts as empty.
class CErr {
  public:
    static constexpr int kWarning = 1;
    static constexpr int kError = 2;
    static constexpr int kNullPointer = 3;

    // Nothing happens when ptr is not null.
    void CheckNull(const void* ptr, const char* function, const char* message);
    void CheckNull(const void* ptr, const char* message);

    // Nothing happens when code is 0. An empty message ends the process without a report.
    void CheckError(short code, const char* function, const char* message);
    void CheckError(short code, const char* message);

    // Returns whether code is an error. An empty message is not reported.
    bool MinorError(short code, const char* function, const char* message);
    bool MinorError(short code, const char* message);

    // Returns for a warning only. The code of a null pointer is not shown.
    void DoRequester(short code, const char* function, const char* message, int kind);

    // Traces, off in this build.
    void DebugPrint(const char* format, ...);
    void DebugPrintMP(const char* format, ...);

    // A callback that stops in the debugger with a C string, which becomes a Pascal string in place. Returns
    // 0.
    static int MPRemoteDebugStrProcedure(void* text);

    // Makes a report stop in the debugger too.
    bool mBreakIntoDebugger = false;

  private:
    // Does not return.
    void endProcess();
};

extern CErr Err;
