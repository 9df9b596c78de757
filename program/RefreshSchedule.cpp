#include "program/RefreshSchedule.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr double kMinute = 60;
constexpr double kWhileNothingIsShown[] = {1 * kMinute, 2 * kMinute, 5 * kMinute};
constexpr double kUsual = 10 * kMinute;
constexpr double kMax = 60 * kMinute;
constexpr int kMaxDoublings = 3;
constexpr double kPatience = 2 * kMinute;  // with one question
constexpr double kMin = 5;                 // however great the haste

}  // namespace

RefreshSchedule::RefreshSchedule(double haste, double now)
    : mHaste(std::max(haste, 1.0)), mDue(now + pause(false)) {}

void RefreshSchedule::asked(double now) {
    mIsAsking = mHasAsked = true;
    mDue = now + kPatience;
}

void RefreshSchedule::answered(bool succeeded, bool somethingIsShown, double now) {
    mIsAsking = false;
    mFailures = succeeded ? 0 : mFailures + 1;
    mDue = now + pause(somethingIsShown || succeeded);
}

void RefreshSchedule::firstMapShown(double now) {
    if (!mHasAsked) mDue = now + pause(true);
}

double RefreshSchedule::pause(bool somethingIsShown) const {
    double seconds = kUsual;
    if (somethingIsShown)
        seconds = std::min(kUsual * (1 << std::min(mFailures, kMaxDoublings)), kMax);
    else if (mFailures < static_cast<int>(std::size(kWhileNothingIsShown)))
        seconds = kWhileNothingIsShown[mFailures];
    return std::max(seconds / mHaste, kMin);
}
