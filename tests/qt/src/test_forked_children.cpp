#include "src/forked_children.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Two ends of a connection: that of a display, and the program's.
class Connection
{
public:
    explicit Connection(int flags = SOCK_CLOEXEC)
    {
        socketpair(AF_UNIX, SOCK_STREAM | flags, 0, m_ends.data());
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection()
    {
        closeOwn();
        ::close(m_ends[0]);
    }

    int own() const { return m_ends[1]; }
    void closeOwn()
    {
        if (m_ends[1] >= 0) {
            ::close(m_ends[1]);
            m_ends[1] = -1;
        }
    }
    /// The display has been told that nobody has the other end any more.
    bool isGone() const
    {
        char byte = 0;
        return recv(m_ends[0], &byte, 1, MSG_DONTWAIT) == 0;
    }

private:
    std::array<int, 2> m_ends = {-1, -1};
};

/// A process that is forked and does nothing. When the constructor is back, it does so.
class Child
{
public:
    Child()
    {
        std::array<int, 2> ready = {};
        EXPECT_EQ(pipe2(ready.data(), O_CLOEXEC), 0);
        m_process = fork();
        if (m_process == 0) {
            const char byte = 1;
            if (::write(ready[1], &byte, 1) == 1) {
                pause();
            }
            _exit(0);
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;
    ~Child()
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }

private:
    pid_t m_process = -1;
};

} // namespace

TEST(ForkedChildren, HaveNoConnectionToTheDisplay)
{
    Connection display;
    setForksApart();
    const Child child;
    EXPECT_FALSE(display.isGone());
    display.closeOwn();
    EXPECT_TRUE(display.isGone());
}

TEST(ForkedChildren, KeepWhatComesLater)
{
    setForksApart();
    Connection later;
    const Child child;
    later.closeOwn();
    EXPECT_FALSE(later.isGone());
}

TEST(ForkedChildren, KeepWhatTheParentHasHandedDown)
{
    Connection inherited(0);
    setForksApart();
    const Child child;
    inherited.closeOwn();
    EXPECT_FALSE(inherited.isGone());
}

TEST(ForkedChildren, KeepWhatHasTakenTheNumberOfTheDisplay)
{
    Connection display;
    setForksApart();
    Connection later;
    ASSERT_EQ(dup3(later.own(), display.own(), O_CLOEXEC), display.own());
    const Child child;
    display.closeOwn();
    later.closeOwn();
    EXPECT_FALSE(later.isGone());
}

TEST(ForkedChildren, EndWithoutTheProgramsEnd)
{
    constexpr int result = 5;
    constexpr unsigned longestSeconds = 10;
    static const pid_t program = getpid();
    // What waits for a thread, which only the program has.
    std::atexit([] {
        if (getpid() != program) {
            pause();
        }
    });
    setForksApart();
    const pid_t child = fork();
    if (child == 0) {
        alarm(longestSeconds);
        std::exit(result);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), result);
}
