#include "platform/linux/system/AnswerCache.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
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

std::size_t filesIn(const std::string& folder) {
    const std::filesystem::directory_iterator files(folder);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

// Ends with 0 when done answers true.
template <typename Done>
pid_t startProcess(const Done& done) {
    const pid_t child = fork();
    if (child == 0) _exit(done() ? 0 : 1);
    return child;
}

bool endedWell(pid_t child) {
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class AnswerCacheTest : public testing::Test {
  protected:
    TemporaryFolder temporary;
    const AnswerCache cache{temporary.path("new/folder")};
};

TEST_F(AnswerCacheTest, AnAnswerComesBackAsItWasStored) {
    KeptAnswer answer = answerTo("https://quakes.example/?a=b", 1795226400);
    answer.validators = {"W/\"x\"", "Sat, 21 Nov 2026 01:02:03 GMT"};
    answer.document = std::string("\n<a>\r\n\0\xff</a>\n", 14);
    EXPECT_FALSE(cache.find(answer.url));
    ASSERT_TRUE(cache.store(answer));
    const auto found = cache.find(answer.url);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->service, answer.service);
    EXPECT_EQ(found->url, answer.url);
    EXPECT_EQ(found->time, answer.time);
    EXPECT_EQ(found->validators.etag, answer.validators.etag);
    EXPECT_EQ(found->validators.lastModified, answer.validators.lastModified);
    EXPECT_EQ(found->document, answer.document);
    EXPECT_FALSE(cache.find("https://quakes.example/"));
}

TEST_F(AnswerCacheTest, TheNewestIsTheServicesOwn) {
    KeptAnswer other = answerTo("c", 30);
    other.service = "https://elsewhere.example/";
    for (const KeptAnswer& answer : {answerTo("a", 20), answerTo("b", 10), other}) cache.store(answer);
    EXPECT_EQ(cache.newest("https://quakes.example/")->url, "a");
    EXPECT_EQ(cache.newest("https://elsewhere.example/")->url, "c");
    EXPECT_FALSE(cache.newest("https://quakes.example"));
}

TEST_F(AnswerCacheTest, FewFilesAreKeptAndNoneIsBig) {
    for (int i = 0; i < 20; ++i) ASSERT_TRUE(cache.store(answerTo(std::to_string(i), i)));
    std::ofstream(cache.folder() + "/answer-1-draft.123-1") << "of a process that was killed";
    std::ofstream(cache.folder() + "/another program's") << "x";
    ASSERT_TRUE(cache.store(answerTo("last", 99)));
    EXPECT_EQ(filesIn(cache.folder()), 5u);
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
    EXPECT_TRUE(endedWell(child));
    EXPECT_FALSE(RequestLock(cache.folder()).hasFailedMeanwhile(url));
    close(waiting[0]);
    close(waiting[1]);
}

TEST_F(AnswerCacheTest, TheLockOfADeadProcessIsFree) {
    const pid_t child = startProcess([&] {
        new RequestLock(cache.folder());
        return raise(SIGKILL) != 0;
    });
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    const RequestLock lock(cache.folder());
    EXPECT_TRUE(lock.isHeld());
    EXPECT_FALSE(RequestLock("/dev/null/nowhere").isHeld());
}

}  // namespace
