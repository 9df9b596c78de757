#include "platform/portable/NotificationCenter.h"

#include <gtest/gtest.h>

namespace {

using platform::NotificationCenter;

TEST(NotificationCenterTest, TellsEveryObserverOfTheNameOnce) {
    int first = 0, second = 0;
    for (const char* name : {"load", "load", "end"})
        NotificationCenter::addObserver(&first, name, [&] { ++first; });
    NotificationCenter::addObserver(&second, "load", [&] { ++second; });
    for (const char* name : {"load", "other"}) NotificationCenter::post(name);
    NotificationCenter::removeObserver(&first);
    for (const char* name : {"load", "end"}) NotificationCenter::post(name);
    NotificationCenter::removeObserver(&second);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST(NotificationCenterTest, LetsAHandlerChangeTheObservers) {
    int told = 0, late = 0;
    NotificationCenter::addObserver(&told, "load", [&] {
        NotificationCenter::addObserver(&late, "load", [&] { ++late; });
        NotificationCenter::removeObserver(&told);
        ++told;
    });
    for (int time = 0; time < 2; ++time) NotificationCenter::post("load");
    NotificationCenter::removeObserver(&late);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(late, 1);
}

}  // namespace
