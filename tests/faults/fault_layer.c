// Stands between a program and the kernel, for what concerns certain files and sockets: counts the calls,
// makes some fail, and writes down what changes files. To be preloaded.
//
// Set by the environment at the start, or by a process about itself with fault_begin():
//   FAULT_PATHS  parts of paths, with colons between them; "socket:" stands for all sockets. Other calls go
//   past. FAULT_AT     the number of the first call that fails, from 1 on; 0 for none FAULT_TIMES  how many
//   fail from there on, 0 for all; 1 if not set FAULT_WAY    how they fail: see enum way FAULT_LOG    a file
//   for one line per call: its number, its name, its error or 0, its path FAULT_TRACE  a file for what
//   changes files, as power_cut.py reads it
//
// For any thread; one lock keeps counts, log and trace in the order in which things happen.
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

enum kind {
    OPEN,
    MAKE,
    READ,
    WRITE,
    SYNC,
    TRUNCATE,
    RENAME,
    REMOVE,
    LOOK,
    LOCK,
    MAP,
    CLOSE,
    SOCKET,
    CONNECT,
    BIND,
    SEND
};

/// A broken disk; one that is full, or somebody who may not; a disk that is full, where only what needs room
/// fails; the sudden end of the process before the call.
enum way { BROKEN, REFUSED, FULL, KILLED };

/// How a call fails on a broken disk, and else.
static const int errors[][2] = {
    [OPEN] = {EIO, EACCES},         [MAKE] = {EIO, ENOSPC},    [READ] = {EIO, EIO},
    [WRITE] = {EIO, ENOSPC},        [SYNC] = {EIO, ENOSPC},    [TRUNCATE] = {EIO, ENOSPC},
    [RENAME] = {EIO, EACCES},       [REMOVE] = {EIO, EACCES},  [LOOK] = {EIO, EACCES},
    [LOCK] = {ENOLCK, EACCES},      [MAP] = {ENOMEM, EACCES},  [CLOSE] = {EIO, EIO},
    [SOCKET] = {EMFILE, EACCES},    [CONNECT] = {EIO, EACCES}, [BIND] = {EADDRINUSE, EACCES},
    [SEND] = {ECONNREFUSED, EPERM},
};

#define PATH_SIZE 4352
/// So many names of kinds of calls, "write" or "pwrite64", fit into a line with a path.
#define LINE_SIZE (2 * PATH_SIZE + 128)

static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
static char watched[PATH_SIZE];
static unsigned calls;
static unsigned failed;
static unsigned first;
static unsigned times;
static enum way way;
static int log_file = -1;
static int trace_file = -1;

/// The function of this name that is called in the end.
#define REAL(name)                                                                                           \
    static __typeof__(&name) real;                                                                           \
    if (real == NULL) {                                                                                      \
        real = (__typeof__(&name))dlsym(RTLD_NEXT, #name);                                                   \
    }

static void put(int file, const void *data, size_t size)
{
    // Past all functions of this file.
    const char *from = data;
    while (size > 0) {
        const long done = syscall(SYS_write, file, from, size);
        if (done <= 0) {
            abort(); // Half a trace proves nothing.
        }
        from += done;
        size -= (size_t)done;
    }
}

__attribute__((format(printf, 2, 3))) static void put_line(int file, const char *format, ...)
{
    char line[LINE_SIZE];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    put(file, line, (size_t)length < sizeof line ? (size_t)length : sizeof line - 1);
}

static int open_own(const char *path)
{
    return path == NULL || *path == '\0'
               ? -1
               : (int)syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

/// Begins anew; NULL or "" for a path is none.
void fault_begin(const char *paths, unsigned at, unsigned how_many, int how, const char *log,
                 const char *trace)
{
    pthread_mutex_lock(&mutex);
    snprintf(watched, sizeof watched, "%s", paths == NULL ? "" : paths);
    calls = failed = 0;
    first = at;
    times = how_many;
    way = (enum way)how;
    if (log_file >= 0) {
        syscall(SYS_close, log_file);
    }
    if (trace_file >= 0) {
        syscall(SYS_close, trace_file);
    }
    log_file = open_own(log);
    trace_file = open_own(trace);
    pthread_mutex_unlock(&mutex);
}

/// So many calls have been counted.
unsigned fault_calls(void)
{
    return calls;
}

/// So many have been made to fail.
unsigned fault_failed(void)
{
    return failed;
}

/// Writes a line of the caller's own into the trace.
void fault_mark(const char *text)
{
    pthread_mutex_lock(&mutex);
    if (trace_file >= 0) {
        put_line(trace_file, "mark %s\n", text);
    }
    pthread_mutex_unlock(&mutex);
}

static unsigned number(const char *name, unsigned standard)
{
    const char *text = getenv(name);
    return text == NULL ? standard : (unsigned)strtoul(text, NULL, 10);
}

__attribute__((constructor)) static void begin_as_the_environment_says(void)
{
    fault_begin(getenv("FAULT_PATHS"), number("FAULT_AT", 0), number("FAULT_TIMES", 1),
                (int)number("FAULT_WAY", 0), getenv("FAULT_LOG"), getenv("FAULT_TRACE"));
}

/// Whether a path, or what a descriptor stands for, has one of the parts in it.
static bool is_watched(const char *path)
{
    const char *part = watched;
    while (*part != '\0') {
        const size_t length = strcspn(part, ":") + (strncmp(part, "socket:", 7) == 0 ? 1 : 0);
        if (length > 0 && memmem(path, strlen(path), part, length) != NULL) {
            return true;
        }
        part += length;
        part += strspn(part, ":");
    }
    return false;
}

static void path_of(int file, char *path)
{
    *path = '\0';
    if (*watched == '\0') {
        return;
    }
    char link[64];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link, path, PATH_SIZE - 1);
    path[length < 0 ? 0 : length] = '\0';
}

static void path_at(int directory, const char *name, char *path)
{
    if (directory == AT_FDCWD || name == NULL || *name == '/') {
        snprintf(path, PATH_SIZE, "%s", name == NULL ? "" : name);
        return;
    }
    path_of(directory, path);
    const size_t length = strlen(path);
    snprintf(path + length, PATH_SIZE - length, "/%s", name);
}

static void path_of_address(const struct sockaddr *address, socklen_t size, char *path)
{
    *path = '\0';
    if (address != NULL && address->sa_family == AF_UNIX && size > offsetof(struct sockaddr_un, sun_path)) {
        const struct sockaddr_un *local = (const struct sockaddr_un *)address;
        snprintf(path, PATH_SIZE, "%.*s", (int)(size - offsetof(struct sockaddr_un, sun_path)),
                 local->sun_path);
    }
}

static bool needs_room(enum kind kind)
{
    return kind == MAKE || kind == WRITE || kind == TRUNCATE || kind == RENAME || kind == SYNC;
}

/// Counts a call. The error that it has to fail with, or 0.
static int judge(const char *call, enum kind kind, const char *path)
{
    if (!is_watched(path)) {
        return 0;
    }
    pthread_mutex_lock(&mutex);
    const unsigned count = ++calls;
    if (way == KILLED && count == first) {
        syscall(SYS_kill, getpid(), SIGKILL);
    }
    const bool in_turn =
        way != KILLED && first > 0 && count >= first && (times == 0 || count < first + times);
    const bool fails = in_turn && (way != FULL || needs_room(kind));
    const int error = !fails ? 0 : way == FULL ? ENOSPC : errors[kind][way];
    failed += fails ? 1 : 0;
    if (log_file >= 0) {
        put_line(log_file, "%u %s %d %s\n", count, call, error, path);
    }
    pthread_mutex_unlock(&mutex);
    return error;
}

static int judge_file(const char *call, enum kind kind, int file)
{
    char path[PATH_SIZE];
    path_of(file, path);
    return judge(call, kind, path);
}

static int judge_name(const char *call, enum kind kind, int directory, const char *name)
{
    char path[PATH_SIZE];
    path_at(directory, name, path);
    return judge(call, kind, path);
}

#define FAIL_WITH(error, result)                                                                             \
    do {                                                                                                     \
        const int error_ = (error);                                                                          \
        if (error_ != 0) {                                                                                   \
            errno = error_;                                                                                  \
            return result;                                                                                   \
        }                                                                                                    \
    } while (0)

// The trace. While a call that changes files is made, nobody else makes one.

/// Whether the call that follows belongs into the trace; if so, holds the lock until traced().
static bool trace_begins(const char *path)
{
    if (trace_file < 0 || !is_watched(path)) {
        return false;
    }
    pthread_mutex_lock(&mutex);
    return true;
}

static bool trace_begins_at(int directory, const char *name, char *path)
{
    path_at(directory, name, path);
    return trace_begins(path);
}

static bool trace_begins_of(int file, char *path)
{
    path_of(file, path);
    return trace_begins(path);
}

static void traced(void)
{
    const int error = errno;
    pthread_mutex_unlock(&mutex);
    errno = error;
}

static unsigned long inode(int file)
{
    struct stat status;
    return syscall(SYS_fstat, file, &status) == 0 ? (unsigned long)status.st_ino : 0;
}

static bool is_directory(int file)
{
    struct stat status;
    return syscall(SYS_fstat, file, &status) == 0 && S_ISDIR(status.st_mode);
}

static void trace_write(int file, long long offset, const void *data, long size)
{
    put_line(trace_file, "write %lu %lld %ld\n", inode(file), offset, size);
    put(trace_file, data, (size_t)size);
    put(trace_file, "\n", 1);
}

static void trace_open(int file, const char *path, int flags, bool existed)
{
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        put_line(trace_file, "create %lu\n", inode(file));
    } else if (!existed) {
        put_line(trace_file, "create %lu %s\n", inode(file), path);
    } else if ((flags & O_TRUNC) != 0) {
        put_line(trace_file, "truncate %lu 0\n", inode(file));
    }
}

// Opening and closing.

static mode_t mode_of(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? (mode_t)va_arg(arguments, int) : 0;
}

typedef int (*open_function)(int directory, const char *name, int flags, mode_t mode);

static int open_watched(const char *call, open_function function, int directory, const char *name, int flags,
                        mode_t mode)
{
    FAIL_WITH(judge_name(call, (flags & O_CREAT) != 0 ? MAKE : OPEN, directory, name), -1);
    char path[PATH_SIZE];
    const bool makes = (flags & (O_CREAT | O_TRUNC | (O_TMPFILE & ~O_DIRECTORY))) != 0;
    if (!makes || !trace_begins_at(directory, name, path)) {
        return function(directory, name, flags, mode);
    }
    const bool existed = syscall(SYS_faccessat, directory, name, F_OK) == 0;
    const int file = function(directory, name, flags, mode);
    if (file >= 0) {
        trace_open(file, path, flags, existed);
    }
    traced();
    return file;
}

static int real_openat(int directory, const char *name, int flags, mode_t mode)
{
    REAL(openat)
    return real(directory, name, flags, mode);
}

#define OPEN_FUNCTION(name)                                                                                  \
    int name(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = mode_of(flags, arguments);                                                       \
        va_end(arguments);                                                                                   \
        return open_watched(#name, real_openat, AT_FDCWD, path, flags, mode);                                \
    }
OPEN_FUNCTION(open)
OPEN_FUNCTION(open64)

#define OPENAT_FUNCTION(name)                                                                                \
    int name(int directory, const char *path, int flags, ...)                                                \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = mode_of(flags, arguments);                                                       \
        va_end(arguments);                                                                                   \
        return open_watched(#name, real_openat, directory, path, flags, mode);                               \
    }
OPENAT_FUNCTION(openat)
OPENAT_FUNCTION(openat64)

int close(int file)
{
    REAL(close)
    const int error = judge_file("close", CLOSE, file);
    const int result = real(file); // It is closed even if that fails.
    FAIL_WITH(error, -1);
    return result;
}

DIR *opendir(const char *name)
{
    REAL(opendir)
    FAIL_WITH(judge_name("opendir", LOOK, AT_FDCWD, name), NULL);
    return real(name);
}

// Reading.

ssize_t read(int file, void *data, size_t size)
{
    REAL(read)
    FAIL_WITH(judge_file("read", READ, file), -1);
    return real(file, data, size);
}

#define PREAD_FUNCTION(name)                                                                                 \
    ssize_t name(int file, void *data, size_t size, off_t offset)                                            \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_file(#name, READ, file), -1);                                                        \
        return real(file, data, size, offset);                                                               \
    }
PREAD_FUNCTION(pread)
PREAD_FUNCTION(pread64)

#define MAP_FUNCTION(name)                                                                                   \
    void *name(void *place, size_t size, int rights, int flags, int file, off_t offset)                      \
    {                                                                                                        \
        REAL(name)                                                                                           \
        if (file >= 0) {                                                                                     \
            FAIL_WITH(judge_file(#name, MAP, file), MAP_FAILED);                                             \
        }                                                                                                    \
        return real(place, size, rights, flags, file, offset);                                               \
    }
MAP_FUNCTION(mmap)
MAP_FUNCTION(mmap64)

// Writing.

ssize_t write(int file, const void *data, size_t size)
{
    REAL(write)
    FAIL_WITH(judge_file("write", WRITE, file), -1);
    char path[PATH_SIZE];
    if (!trace_begins_of(file, path)) {
        return real(file, data, size);
    }
    const ssize_t done = real(file, data, size);
    if (done > 0) {
        trace_write(file, (long long)lseek(file, 0, SEEK_CUR) - done, data, done);
    }
    traced();
    return done;
}

#define PWRITE_FUNCTION(name)                                                                                \
    ssize_t name(int file, const void *data, size_t size, off_t offset)                                      \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_file(#name, WRITE, file), -1);                                                       \
        char path[PATH_SIZE];                                                                                \
        if (!trace_begins_of(file, path)) {                                                                  \
            return real(file, data, size, offset);                                                           \
        }                                                                                                    \
        const ssize_t done = real(file, data, size, offset);                                                 \
        if (done > 0) {                                                                                      \
            trace_write(file, offset, data, done);                                                           \
        }                                                                                                    \
        traced();                                                                                            \
        return done;                                                                                         \
    }
PWRITE_FUNCTION(pwrite)
PWRITE_FUNCTION(pwrite64)

#define TRUNCATE_FUNCTION(name)                                                                              \
    int name(int file, off_t size)                                                                           \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_file(#name, TRUNCATE, file), -1);                                                    \
        char path[PATH_SIZE];                                                                                \
        if (!trace_begins_of(file, path)) {                                                                  \
            return real(file, size);                                                                         \
        }                                                                                                    \
        const int result = real(file, size);                                                                 \
        if (result == 0) {                                                                                   \
            put_line(trace_file, "truncate %lu %lld\n", inode(file), (long long)size);                       \
        }                                                                                                    \
        traced();                                                                                            \
        return result;                                                                                       \
    }
TRUNCATE_FUNCTION(ftruncate)
TRUNCATE_FUNCTION(ftruncate64)

#define SYNC_FUNCTION(name)                                                                                  \
    int name(int file)                                                                                       \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_file(#name, SYNC, file), -1);                                                        \
        char path[PATH_SIZE];                                                                                \
        if (!trace_begins_of(file, path)) {                                                                  \
            return real(file);                                                                               \
        }                                                                                                    \
        const int result = real(file);                                                                       \
        if (result == 0) {                                                                                   \
            put_line(trace_file, "%s %lu\n", is_directory(file) ? "syncdir" : "sync", inode(file));          \
        }                                                                                                    \
        traced();                                                                                            \
        return result;                                                                                       \
    }
SYNC_FUNCTION(fsync)
SYNC_FUNCTION(fdatasync)

// Names.

/// A call that has renamed, in the trace.
#define RENAMING(call, old_directory, old_name, new_directory, new_name, really)                             \
    do {                                                                                                     \
        FAIL_WITH(judge_name(call, RENAME, new_directory, new_name), -1);                                    \
        char old_path[PATH_SIZE];                                                                            \
        char new_path[PATH_SIZE];                                                                            \
        path_at(old_directory, old_name, old_path);                                                          \
        if (!trace_begins_at(new_directory, new_name, new_path)) {                                           \
            return (really);                                                                                 \
        }                                                                                                    \
        const int result = (really);                                                                         \
        if (result == 0) {                                                                                   \
            put_line(trace_file, "rename %s\t%s\n", old_path, new_path);                                     \
        }                                                                                                    \
        traced();                                                                                            \
        return result;                                                                                       \
    } while (0)

int rename(const char *old_name, const char *new_name)
{
    REAL(rename)
    RENAMING("rename", AT_FDCWD, old_name, AT_FDCWD, new_name, real(old_name, new_name));
}

int renameat(int old_directory, const char *old_name, int new_directory, const char *new_name)
{
    REAL(renameat)
    RENAMING("renameat", old_directory, old_name, new_directory, new_name,
             real(old_directory, old_name, new_directory, new_name));
}

int renameat2(int old_directory, const char *old_name, int new_directory, const char *new_name,
              unsigned flags)
{
    REAL(renameat2)
    RENAMING("renameat2", old_directory, old_name, new_directory, new_name,
             real(old_directory, old_name, new_directory, new_name, flags));
}

int linkat(int old_directory, const char *old_name, int new_directory, const char *new_name, int flags)
{
    REAL(linkat)
    FAIL_WITH(judge_name("linkat", MAKE, new_directory, new_name), -1);
    char path[PATH_SIZE];
    if (!trace_begins_at(new_directory, new_name, path)) {
        return real(old_directory, old_name, new_directory, new_name, flags);
    }
    const int result = real(old_directory, old_name, new_directory, new_name, flags);
    struct stat status;
    if (result == 0 && syscall(SYS_newfstatat, new_directory, new_name, &status, 0) == 0) {
        put_line(trace_file, "link %lu %s\n", (unsigned long)status.st_ino, path);
    }
    traced();
    return result;
}

static int remove_watched(const char *call, int directory, const char *name,
                          int (*function)(int, const char *, int), int flags)
{
    FAIL_WITH(judge_name(call, REMOVE, directory, name), -1);
    char path[PATH_SIZE];
    if (!trace_begins_at(directory, name, path)) {
        return function(directory, name, flags);
    }
    const int result = function(directory, name, flags);
    if (result == 0) {
        put_line(trace_file, "unlink %s\n", path);
    }
    traced();
    return result;
}

static int real_unlinkat(int directory, const char *name, int flags)
{
    REAL(unlinkat)
    return real(directory, name, flags);
}

int unlink(const char *name)
{
    return remove_watched("unlink", AT_FDCWD, name, real_unlinkat, 0);
}

int unlinkat(int directory, const char *name, int flags)
{
    return remove_watched("unlinkat", directory, name, real_unlinkat, flags);
}

int mkdir(const char *name, mode_t mode)
{
    REAL(mkdir)
    FAIL_WITH(judge_name("mkdir", MAKE, AT_FDCWD, name), -1);
    return real(name, mode);
}

int chmod(const char *name, mode_t mode)
{
    REAL(chmod)
    FAIL_WITH(judge_name("chmod", REMOVE, AT_FDCWD, name), -1);
    return real(name, mode);
}

int fchmod(int file, mode_t mode)
{
    REAL(fchmod)
    FAIL_WITH(judge_file("fchmod", REMOVE, file), -1);
    return real(file, mode);
}

// Looking.

#define STAT_FUNCTION(name, type)                                                                            \
    int name(const char *path, struct type *status)                                                          \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_name(#name, LOOK, AT_FDCWD, path), -1);                                              \
        return real(path, status);                                                                           \
    }
STAT_FUNCTION(stat, stat)
STAT_FUNCTION(stat64, stat64)
STAT_FUNCTION(lstat, stat)
STAT_FUNCTION(lstat64, stat64)

#define FSTAT_FUNCTION(name, type)                                                                           \
    int name(int file, struct type *status)                                                                  \
    {                                                                                                        \
        REAL(name)                                                                                           \
        FAIL_WITH(judge_file(#name, LOOK, file), -1);                                                        \
        return real(file, status);                                                                           \
    }
FSTAT_FUNCTION(fstat, stat)
FSTAT_FUNCTION(fstat64, stat64)

int statx(int directory, const char *name, int flags, unsigned mask, struct statx *status)
{
    REAL(statx)
    if (*name == '\0') {
        FAIL_WITH(judge_file("statx", LOOK, directory), -1);
    } else {
        FAIL_WITH(judge_name("statx", LOOK, directory, name), -1);
    }
    return real(directory, name, flags, mask, status);
}

int access(const char *name, int mode)
{
    REAL(access)
    FAIL_WITH(judge_name("access", LOOK, AT_FDCWD, name), -1);
    return real(name, mode);
}

/// Whether it asks for a lock. That giving one up fails is unheard of.
static bool asks_for_lock(int command, const void *argument)
{
    return (command == F_SETLK || command == F_SETLKW) && ((const struct flock *)argument)->l_type != F_UNLCK;
}

#define CONTROL_FUNCTION(name)                                                                               \
    int name(int file, int command, ...)                                                                     \
    {                                                                                                        \
        REAL(name)                                                                                           \
        va_list arguments;                                                                                   \
        va_start(arguments, command);                                                                        \
        void *argument = va_arg(arguments, void *);                                                          \
        va_end(arguments);                                                                                   \
        if (asks_for_lock(command, argument)) {                                                              \
            FAIL_WITH(judge_file(#name, LOCK, file), -1);                                                    \
        }                                                                                                    \
        return real(file, command, argument);                                                                \
    }
CONTROL_FUNCTION(fcntl)
CONTROL_FUNCTION(fcntl64)

int flock(int file, int operation)
{
    REAL(flock)
    FAIL_WITH(judge_file("flock", LOCK, file), -1);
    return real(file, operation);
}

// Sockets.

int socket(int domain, int type, int protocol)
{
    REAL(socket)
    if (domain == AF_UNIX) {
        FAIL_WITH(judge("socket", SOCKET, "socket:"), -1);
    }
    return real(domain, type, protocol);
}

#define ADDRESS_FUNCTION(name, kind)                                                                         \
    int name(int file, const struct sockaddr *address, socklen_t size)                                       \
    {                                                                                                        \
        REAL(name)                                                                                           \
        char path[PATH_SIZE];                                                                                \
        path_of_address(address, size, path);                                                                \
        FAIL_WITH(judge(#name, kind, path), -1);                                                             \
        return real(file, address, size);                                                                    \
    }
ADDRESS_FUNCTION(connect, CONNECT)
ADDRESS_FUNCTION(bind, BIND)

ssize_t send(int file, const void *data, size_t size, int flags)
{
    REAL(send)
    FAIL_WITH(judge_file("send", SEND, file), -1);
    return real(file, data, size, flags);
}

ssize_t sendto(int file, const void *data, size_t size, int flags, const struct sockaddr *address,
               socklen_t address_size)
{
    REAL(sendto)
    char path[PATH_SIZE];
    path_of_address(address, address_size, path);
    FAIL_WITH(judge("sendto", SEND, path), -1);
    return real(file, data, size, flags, address, address_size);
}
