#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/TemporaryFolder.h"
#include "tests/program/Child.h"
#include "tests/program/TestDisplay.h"

// The program in a world of its own: home, settings, temporary files and current folder lie in one new
// folder.
class Program {
  public:
    Program();
    explicit Program(const TestDisplay& display);
    // Whatever it started ends with it.
    ~Program();

    // What start uses; a test may change either before.
    std::string executable;
    std::map<std::string, std::string> environment;

    void start(const std::vector<std::string>& arguments);
    void signal(int number) { mChild->signal(number); }
    bool isRunning() { return mChild && !mChild->status(); }
    pid_t id() const { return mChild->id(); }

    // Waits for that many lines on stderr that hold the text. Returns false when the program ends before.
    bool waitForLines(const std::string& text, int count = 1);
    int countLines(const std::string& text) const;
    // Waits for the end. Empty when it does not come.
    std::optional<int> waitForStatus();
    // Starts, waits and gives the status.
    std::optional<int> run(const std::vector<std::string>& arguments);

    std::string output() const;
    std::string errors() const;
    // The path of something in the program's current folder.
    std::string path(const std::string& name) const { return mFolder.path(name); }
    // The names of its own folders among the temporary files.
    std::vector<std::string> temporaryFolders() const;

  private:
    TemporaryFolder mFolder;
    std::unique_ptr<Child> mChild;
};

int countOf(const std::string& text, const std::string& part);
