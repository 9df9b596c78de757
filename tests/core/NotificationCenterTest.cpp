#include "platform/portable/NotificationCenter.h"

#include <gtest/gtest.h>

namespace {

using platform::NotificationCenter;

// An observer that counts what it is told, for as long as it lives.
struct Observer {
    ~Observer() { NotificationCenter::removeObserver(this); }

    void observe(const std::string& name) {
        NotificationCenter::addObserver(this, name, [this] { ++told; });
    }

    int told = 0;
};

TEST(NotificationCenterTest, TellsEveryObserverOfTheNameOnceUntilItIsGone) {
    Observer first, second;
    for (const char* name : {"load", "load", "end"}) first.observe(name);
    second.observe("load");
    for (const char* name : {"load", "other"}) NotificationCenter::post(name);
    NotificationCenter::removeObserver(&first);
    for (const char* name : {"load", "end"}) NotificationCenter::post(name);
    EXPECT_EQ(first.told, 1);
    EXPECT_EQ(second.told, 2);
}

TEST(NotificationCenterTest, LetsAHandlerRegisterAndRemove) {
    Observer observer, late;
    NotificationCenter::addObserver(&observer, "load", [&] {
        late.observe("load");
        NotificationCenter::removeObserver(&observer);
        ++observer.told;
    });
    for (int time = 0; time < 2; ++time) NotificationCenter::post("load");
    EXPECT_EQ(observer.told, 1);
    EXPECT_EQ(late.told, 1);
}

}  // namespace
