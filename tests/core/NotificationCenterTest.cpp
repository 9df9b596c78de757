#include "platform/NotificationCenter.h"

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
    first.observe("load");
    first.observe("load");
    first.observe("end");
    second.observe("load");
    NotificationCenter::post("load");
    NotificationCenter::post("other");
    EXPECT_EQ(first.told, 1);
    EXPECT_EQ(second.told, 1);

    NotificationCenter::removeObserver(&first);
    NotificationCenter::post("load");
    NotificationCenter::post("end");
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
    NotificationCenter::post("load");
    NotificationCenter::post("load");
    EXPECT_EQ(observer.told, 1);
    EXPECT_EQ(late.told, 1);
}

}  // namespace
