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

TEST(NotificationCenterTest, TellsEveryObserverOfTheNameOnce) {
    Observer first, second;
    first.observe("load");
    first.observe("load");
    second.observe("load");
    NotificationCenter::post("load");
    EXPECT_EQ(first.told, 1);
    EXPECT_EQ(second.told, 1);
    NotificationCenter::post("other");
    EXPECT_EQ(first.told, 1);
}

TEST(NotificationCenterTest, TellsNothingToAnObserverThatIsGone) {
    Observer observer, other;
    observer.observe("load");
    observer.observe("end");
    other.observe("load");
    NotificationCenter::removeObserver(&observer);
    NotificationCenter::post("load");
    NotificationCenter::post("end");
    EXPECT_EQ(observer.told, 0);
    EXPECT_EQ(other.told, 1);
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
