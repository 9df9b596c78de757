#pragma once

// Reports every failure the same way: a beep, an entry in "error.log" in the current directory and an
// alert. Null pointers and errors then end the process with status 0; warnings return. Not reentrant.
//
// function is the full signature of the function that failed; null shows as "???". A message whose first byte
// is not from 1 to 127 counts as empty.
class CErr {
  public:
    static constexpr int kWarning = 1;
    static constexpr int kError = 2;
    static constexpr int kNullPointer = 3;

    // Does nothing if ptr is not null.
    void CheckNull(const void* ptr, const char* function, const char* message);
    void CheckNull(const void* ptr, const char* message);

    // Does nothing if code is 0. An empty message ends the process without a report.
    void CheckError(short code, const char* function, const char* message);
    void CheckError(short code, const char* message);

    // Returns whether code is an error. An empty message is not reported.
    bool MinorError(short code, const char* function, const char* message);
    bool MinorError(short code, const char* message);

    // Returns only after a warning. Shows no code for a null pointer.
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
