#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/TemporaryFolder.h"
#include "tests/program/Child.h"
#include "tests/program/Picture.h"

struct _XDisplay;

// An X server of its own with one screen of 24 bits and no window manager, and a client of it. Xvfb, where
// nothing else is asked for.
class TestDisplay {
  public:
    using Window = unsigned long;

    explicit TestDisplay(int width = 1280, int height = 720);
    explicit TestDisplay(const std::vector<std::string>& server);
    ~TestDisplay();

    // ":7" for one.
    const std::string& name() const { return mName; }
    Picture picture() const;
    bool cursorIsVisible() const;

    // Windows at the upper left corner, as a screen-saver host gives them; filled with pink.
    Window createWindow(int width, int height) { return createWindow(width, height, 24); }
    // The same with 32 bits a pixel, in which the client's pictures have 24.
    Window createWindowWithAlpha(int width, int height) { return createWindow(width, height, 32); }
    struct Area {
        int left = 0, top = 0, width = 0, height = 0;
    };
    // Where the window lies on the screen; empty when it does not exist.
    Area areaOf(Window window) const;
    void resizeWindow(Window window, int width, int height);
    void destroyWindow(Window window);

    // The uppermost visible window whose title begins so; 0 when there is none.
    Window windowWithTitle(const std::string& title) const;
    void focus(Window window);
    // Asks the window to close, as its close button would.
    void close(Window window);
    // Presses and releases a key by its X name, such as "Return".
    void press(const std::string& key);
    void movePointer(int x, int y);
    void click();

  protected:
    _XDisplay* connection() const { return mConnection; }

  private:
    Window createWindow(int width, int height, int depth);

    TemporaryFolder mFolder;
    std::string mName;
    std::unique_ptr<Child> mServer;
    _XDisplay* mConnection;
};
