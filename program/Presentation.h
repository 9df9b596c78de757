#pragma once

#include <memory>

#include "platform/linux/desktop/Window.h"

class AnimationTimer;
struct Options;
class TellmarScreenSaverView;

// The saver's view in its window, and the ticks that drive it.
class Presentation {
  public:
    Presentation(std::unique_ptr<platform::Window> window, const Options& options);
    ~Presentation();
    Presentation(const Presentation&) = delete;
    Presentation& operator=(const Presentation&) = delete;

    bool isPreview() const { return mIsPreview; }

    // Brings the window to the screen, with what the view shows at first: it can be there before the feed is
    // fetched.
    void showWaitingView();
    // Brings the view into the window, which needs the feed. Returns false on failure, which is logged.
    bool start();
    void stop();

  private:
    double interval(double speed) const;
    void tick();
    void reportFirstMap();

    std::unique_ptr<platform::Window> mWindow;
    const bool mIsPreview;
    const double mSpeed;
    TellmarScreenSaverView* mView = nullptr;  // owned by mWindow
    std::unique_ptr<AnimationTimer> mTimer;
    int mTicks = 0, mLoadedPages = 0;
    bool mShowsMaps = false;
};
