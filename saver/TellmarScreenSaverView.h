#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/ConfigPanel.h"
#include "platform/ViewAnimation.h"
#include "platform/portable/ScreenSaverView.h"

class InitialView;
class SingleQuakeView;

// The module's principal view: a splash until the first quake's page is complete, then two quake views that
// take turns at every tick. A preview only paints a still image.
class TellmarScreenSaverView : public platform::ScreenSaverView {
  public:
    enum class Mode : std::int32_t { Splash = 0, PageSeen = 1, Cycling = 2 };

    // Fetches the feed, blocking, and starts to load the first two pages. Returns this view, or null where
    // View::initWithFrame does.
    TellmarScreenSaverView* initWithFrame(const platform::Rect& frame, bool isPreview);

    void startAnimation() override;
    void stopAnimation() override;
    void animateOneFrame() override;

    // Reads the stored setting; a missing one or zero is replaced by the default and written back.
    void getSaverDefaults();

    // False, so hosts do not offer a sheet, although configureSheet has one.
    bool hasConfigureSheet() override;
    // Loaded on the first call and kept. Null when loading fails; the next call tries again.
    platform::Panel* configureSheet() override;
    void closeSheetSave(platform::Button* sender);
    void closeSheetCancel(platform::Button* sender);

    Mode mode() const { return mMode; }
    int displayForSec() const { return mDisplayForSec; }

  private:
    void addQuakeView();
    void addInitialView();
    SingleQuakeView* quakeView(std::int32_t index) const;

    void addView(platform::View* view, std::vector<platform::ViewAnimationDescription>& animations,
                 platform::ViewAnimationEffect effect) const;
    void drawInitialView();
    void drawBlendingWebViews();
    void drawPreviewImage();
    void drawPreviewNotice();

    std::string mBundleID;  // the name that the settings are stored under
    Mode mMode = Mode::Splash;
    std::int32_t mDisplayForSec = 0;
    std::int32_t mVisibleViewIndex = 1;                   // the quake view that the next fade brings in
    std::unique_ptr<platform::ViewAnimation> mAnimation;  // the last tick's fade
    InitialView* mInitialView = nullptr;                  // one of the subviews

    // Set when the sheet is loaded.
    platform::Panel* mConfigPanel = nullptr;
    platform::Slider* mZoomSlider = nullptr;
    platform::Slider* mRateSlider = nullptr;
    platform::Button* mOKButton = nullptr;
    platform::Button* mCancelButton = nullptr;
};
