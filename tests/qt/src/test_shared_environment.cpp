#include "src/shared_environment.h"

#include "repeats.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using testing::StrEq;

namespace {

/// A process that waits for so long waits for ever.
constexpr unsigned childSeconds = 5;

/// All entries of a variable, as a child process would get them.
std::vector<std::string> entriesOf(const std::string &name)
{
    std::vector<std::string> entries;
    for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (std::string(*entry).rfind(name + '=', 0) == 0) {
            entries.emplace_back(*entry);
        }
    }
    return entries;
}

/// Forks a process that sets a variable, and waits for its end.
int statusOfWritingChild()
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(childSeconds);
        _exit(setenv("KUBELOR_CHILD", "1", 1));
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

class SharedEnvironment : public testing::Test
{
protected:
    SharedEnvironment() { shareEnvironment(); }
    ~SharedEnvironment() override { environ = m_before; }

private:
    char **m_before = environ;
};

} // namespace

TEST_F(SharedEnvironment, LibrariesWriteByIt)
{
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "setenv"), reinterpret_cast<void *>(&setenv));
    Dl_info origin = {};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "setenv"), &origin), 0);
    Dl_info program = {};
    ASSERT_NE(dladdr(reinterpret_cast<void *>(&shareEnvironment), &program), 0);
    EXPECT_EQ(origin.dli_fbase, program.dli_fbase);
}

TEST_F(SharedEnvironment, SetsAndReplaces)
{
    EXPECT_EQ(setenv("KUBELOR_A", "1", 1), 0);
    EXPECT_THAT(std::getenv("KUBELOR_A"), StrEq("1"));
    EXPECT_EQ(setenv("KUBELOR_A", "2", 0), 0);
    EXPECT_THAT(std::getenv("KUBELOR_A"), StrEq("1"));
    EXPECT_EQ(setenv("KUBELOR_A", "", 1), 0);
    EXPECT_THAT(std::getenv("KUBELOR_A"), StrEq(""));
    EXPECT_EQ(setenv("KUBELOR_AB", "b=c", 1), 0);
    EXPECT_EQ(setenv("KUBELOR_A", "3", 1), 0);
    EXPECT_THAT(entriesOf("KUBELOR_A"), testing::ElementsAre("KUBELOR_A=3"));
    EXPECT_THAT(std::getenv("KUBELOR_AB"), StrEq("b=c"));
}

TEST_F(SharedEnvironment, KeepsACopy)
{
    std::string name = "KUBELOR_COPY";
    std::string value = "alt";
    ASSERT_EQ(setenv(name.c_str(), value.c_str(), 1), 0);
    value = "neu";
    name = "X";
    EXPECT_THAT(std::getenv("KUBELOR_COPY"), StrEq("alt"));
}

TEST_F(SharedEnvironment, AnOldValueStaysReadable)
{
    ASSERT_EQ(setenv("KUBELOR_OLD", "alt", 1), 0);
    const char *const old = std::getenv("KUBELOR_OLD");
    ASSERT_EQ(setenv("KUBELOR_OLD", "neu", 1), 0);
    ASSERT_EQ(unsetenv("KUBELOR_OLD"), 0);
    EXPECT_THAT(old, StrEq("alt"));
    EXPECT_EQ(std::getenv("KUBELOR_OLD"), nullptr);
}

TEST_F(SharedEnvironment, RefusesWhatIsNoName)
{
    char **const before = environ;
    for (const char *name : {"", "KUBELOR_REFUSED=B"}) {
        errno = 0;
        EXPECT_EQ(setenv(name, "1", 1), -1);
        EXPECT_EQ(errno, EINVAL);
        errno = 0;
        EXPECT_EQ(unsetenv(name), -1);
        EXPECT_EQ(errno, EINVAL);
    }
    EXPECT_EQ(environ, before);
    EXPECT_TRUE(entriesOf("KUBELOR_REFUSED").empty());
}

TEST_F(SharedEnvironment, RemovesEachEntryOfAName)
{
    std::array<std::string, 4> entries = {"KUBELOR_R=1", "KUBELOR_S=2", "KUBELOR_R=3", "KUBELOR_R=4"};
    std::array<char *, 5> given = {};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        given[i] = entries[i].data();
    }
    environ = given.data();
    EXPECT_EQ(unsetenv("KUBELOR_R"), 0);
    EXPECT_TRUE(entriesOf("KUBELOR_R").empty());
    EXPECT_THAT(std::getenv("KUBELOR_S"), StrEq("2"));
    EXPECT_EQ(unsetenv("KUBELOR_R"), 0);
}

TEST_F(SharedEnvironment, PutMakesTheTextItselfAPart)
{
    std::string entry = "KUBELOR_P=1";
    EXPECT_EQ(putenv(entry.data()), 0);
    EXPECT_THAT(std::getenv("KUBELOR_P"), StrEq("1"));
    entry.back() = '2';
    EXPECT_THAT(std::getenv("KUBELOR_P"), StrEq("2"));
    std::string name = "KUBELOR_P";
    EXPECT_EQ(putenv(name.data()), 0);
    EXPECT_EQ(std::getenv("KUBELOR_P"), nullptr);
}

TEST_F(SharedEnvironment, BeginsAnewAfterItWasEmptied)
{
    ASSERT_EQ(clearenv(), 0);
    EXPECT_EQ(std::getenv("PATH"), nullptr);
    EXPECT_EQ(unsetenv("PATH"), 0);
    ASSERT_EQ(setenv("KUBELOR_A", "1", 0), 0);
    EXPECT_THAT(entriesOf("KUBELOR_A"), testing::ElementsAre("KUBELOR_A=1"));
    EXPECT_EQ(environ[1], nullptr);
}

TEST_F(SharedEnvironment, OneThreadReadsWhatAnotherWrites)
{
    constexpr int variables = 500;
    for (int round = 0; round < repeats(50); ++round) {
        ASSERT_EQ(clearenv(), 0);
        ASSERT_EQ(setenv("KUBELOR_FIRST", "da", 1), 0);
        std::atomic<bool> isWritten = false;
        std::thread writer([&] {
            for (int i = 0; i < variables; ++i) {
                setenv(("KUBELOR_" + std::to_string(i)).c_str(), std::to_string(i).c_str(), 1);
            }
            isWritten = true;
        });
        int misses = 0;
        while (!isWritten) {
            const char *const value = std::getenv("KUBELOR_FIRST");
            misses += value == nullptr || std::string(value) != "da" ? 1 : 0;
            std::getenv("KUBELOR_ABSENT");
        }
        writer.join();
        EXPECT_EQ(misses, 0);
        EXPECT_THAT(std::getenv(("KUBELOR_" + std::to_string(variables - 1)).c_str()),
                    StrEq(std::to_string(variables - 1)));
    }
}

TEST_F(SharedEnvironment, AForkedProcessWritesAsWell)
{
    std::atomic<bool> goesOn = true;
    std::thread writer([&goesOn] {
        while (goesOn) {
            setenv("KUBELOR_FORK", "1", 1);
        }
    });
    for (int child = 0; child < repeats(200); ++child) {
        EXPECT_EQ(statusOfWritingChild(), 0) << "of child " << child;
    }
    goesOn = false;
    writer.join();
}
