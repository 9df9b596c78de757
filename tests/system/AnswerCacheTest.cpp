#include "platform/linux/system/AnswerCache.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <memory>

#include "platform/linux/system/RequestLock.h"
#include "tests/TemporaryFolder.h"

using namespace platform;

namespace {

KeptAnswer answerTo(const std::string& url, std::time_t time) {
    return {
        .service = "https://quakes.example/", .url = url, .time = time, .validators = {}, .document = url};
}

// Ends with 0 when done answers true.
template <typename Done>
pid_t startProcess(const Done& done) {
    const pid_t child = fork();
    if (child == 0) _exit(done() ? 0 : 1);
    return child;
}

int statusOf(pid_t child) {
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

class AnswerCacheTest : public testing::Test {
  protected:
    TemporaryFolder temporary;
    const AnswerCache cache{temporary.path("new/folder")};
};

TEST_F(AnswerCacheTest, TheNewestIsTheServicesOwn) {
    KeptAnswer other = answerTo("c", 30);
    other.service = "https://elsewhere.example/";
    for (const KeptAnswer& answer : {answerTo("a", 20), answerTo("b", 10), other}) cache.store(answer);
    EXPECT_EQ(cache.newest("https://quakes.example/")->url, "a");
    EXPECT_FALSE(cache.newest("https://quakes.example"));
}

TEST_F(AnswerCacheTest, FewFilesAreKeptAndNoneIsBig) {
    for (int i = 0; i < 20; ++i) ASSERT_TRUE(cache.store(answerTo(std::to_string(i), i)));
    std::ofstream(cache.folder() + "/answer-1-draft.123-1") << "of a process that was killed";
    std::ofstream(cache.folder() + "/another program's") << "x";
    ASSERT_TRUE(cache.store(answerTo("last", 99)));
    EXPECT_EQ(filesIn(cache.folder()), 5);
    EXPECT_TRUE(cache.find("last"));

    KeptAnswer big = answerTo("big", 100);
    big.document.assign(5 << 20, 'x');
    EXPECT_FALSE(cache.store(big));
    EXPECT_FALSE(cache.find("big"));
}

TEST_F(AnswerCacheTest, WhoWaitsForTheLockHearsOfAFailure) {
    int waiting[2];
    ASSERT_EQ(pipe(waiting), 0);
    const std::string url = "https://quakes.example/?a=b";
    auto holder = std::make_unique<RequestLock>(cache.folder());
    holder->noteFailure(url);  // before anybody waited
    const pid_t child = startProcess([&] {
        // Told by the main loop, which runs once the wait has begun.
        g_idle_add([](gpointer pipe) -> gboolean { return write(*static_cast<int*>(pipe), "w", 1) < 0; },
                   &waiting[1]);
        const RequestLock lock(cache.folder());
        return lock.hasFailedMeanwhile(url) && !lock.hasFailedMeanwhile(url + "c");
    });
    char byte;
    ASSERT_EQ(read(waiting[0], &byte, 1), 1);
    holder->noteFailure(url);
    holder.reset();
    EXPECT_EQ(statusOf(child), 0);
    EXPECT_FALSE(RequestLock(cache.folder()).hasFailedMeanwhile(url));
    for (const int end : waiting) close(end);
}

TEST_F(AnswerCacheTest, TheLockOfADeadProcessIsFree) {
    const int status = statusOf(startProcess([&] {
        new RequestLock(cache.folder());
        return raise(SIGKILL) != 0;
    }));
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(RequestLock(cache.folder()).isHeld());
    EXPECT_FALSE(RequestLock("/dev/null/nowhere").isHeld());
}

}  // namespace
