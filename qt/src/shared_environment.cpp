#include "src/shared_environment.h"

#include "shared/gui_thread.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <new>
#include <pthread.h>
#include <set>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

/// What stands behind `environ`. Any thread, each call under a lock of its own that nothing else is taken
/// within.
class Environment
{
public:
    static Environment &instance();

    /// Sets a variable to a copy of what is given.
    void set(std::string_view name, const char *value, bool overwrite);
    /// Makes the caller's "name=value" itself a part of the environment.
    void put(std::string_view name, char *entry);
    void remove(std::string_view name);
    void clear();

private:
    Environment();

    /// The entry of a variable, or the null behind the last one.
    static char **find(char **from, std::string_view name);
    static void replace(char **place, char *entry);
    static void publish(char **table);
    void assign(std::string_view name, char *entry);
    /// The null behind the last entry, with room for one more behind it.
    char **reserveEnd();

    std::mutex m_mutex;
    // Only grow: nobody knows who still reads.
    std::set<std::string, std::less<>> m_entries;
    std::vector<std::vector<char *>> m_tables;
};

/// Nobody writes while a process is forked: the child has no thread that would end that.
Environment::Environment()
{
    pthread_atfork([] { instance().m_mutex.lock(); }, [] { instance().m_mutex.unlock(); },
                   [] { instance().m_mutex.unlock(); });
}

Environment &Environment::instance()
{
    // It outlives the end of main(), as threads that read do.
    static Environment &environment = *new Environment;
    return environment;
}

char **Environment::find(char **from, std::string_view name)
{
    const auto isNamed = [name](std::string_view entry) {
        return entry.size() > name.size() && entry[name.size()] == '=' &&
               entry.substr(0, name.size()) == name;
    };
    while (*from != nullptr && !isNamed(*from)) {
        ++from;
    }
    return from;
}

void Environment::replace(char **place, char *entry)
{
    __atomic_store_n(place, entry, __ATOMIC_RELEASE);
}

void Environment::publish(char **table)
{
    __atomic_store_n(&environ, table, __ATOMIC_RELEASE);
}

char **Environment::reserveEnd()
{
    char *nothing = nullptr;
    char **const first = environ != nullptr ? environ : &nothing;
    char **last = first;
    while (*last != nullptr) {
        ++last;
    }
    const auto count = static_cast<std::size_t>(last - first);
    const bool isOurs = !m_tables.empty() && environ == m_tables.back().data();
    if (isOurs && count + 1 < m_tables.back().size()) {
        return last;
    }
    std::vector<char *> table(2 * (count + 1) + 1);
    std::copy(first, last, table.begin());
    publish(m_tables.emplace_back(std::move(table)).data());
    return environ + count;
}

void Environment::assign(std::string_view name, char *entry)
{
    char **const known = environ != nullptr ? find(environ, name) : nullptr;
    replace(known != nullptr && *known != nullptr ? known : reserveEnd(), entry);
}

void Environment::set(std::string_view name, const char *value, bool overwrite)
{
    const std::lock_guard lock(m_mutex);
    if (!overwrite && environ != nullptr && *find(environ, name) != nullptr) {
        return;
    }
    const auto kept = m_entries.insert(std::string(name) + '=' + value).first;
    assign(name, const_cast<char *>(kept->data())); // `environ` knows no const
}

void Environment::put(std::string_view name, char *entry)
{
    const std::lock_guard lock(m_mutex);
    assign(name, entry);
}

void Environment::remove(std::string_view name)
{
    const std::lock_guard lock(m_mutex);
    if (environ == nullptr) {
        return;
    }
    for (char **place = find(environ, name); *place != nullptr; place = find(place, name)) {
        for (char **next = place; *next != nullptr; ++next) {
            replace(next, next[1]);
        }
    }
}

void Environment::clear()
{
    const std::lock_guard lock(m_mutex);
    publish(nullptr);
}

bool isName(const char *name)
{
    return *name != '\0' && std::string_view(name).find('=') == std::string_view::npos;
}

int refuse(int error)
{
    errno = error;
    return -1;
}

/// Without memory the environment stays as it was.
template <typename Change> int changed(Change change)
{
    try {
        change();
        return 0;
    } catch (const std::bad_alloc &) {
        return refuse(ENOMEM);
    }
}

} // namespace

// Names, parameters and results are POSIX's.
extern "C" {

Q_DECL_EXPORT int setenv(const char *name, const char *value, int replace) noexcept
{
    if (!isName(name)) {
        return refuse(EINVAL);
    }
    return changed([&] { Environment::instance().set(name, value, replace != 0); });
}

Q_DECL_EXPORT int unsetenv(const char *name) noexcept
{
    if (!isName(name)) {
        return refuse(EINVAL);
    }
    return changed([&] { Environment::instance().remove(name); });
}

Q_DECL_EXPORT int putenv(char *string) noexcept
{
    const std::string_view text(string);
    const std::size_t separator = text.find('=');
    if (separator == std::string_view::npos) {
        return unsetenv(string);
    }
    return changed([&] { Environment::instance().put(text.substr(0, separator), string); });
}

Q_DECL_EXPORT int clearenv() noexcept
{
    return changed([] { Environment::instance().clear(); });
}
}

void shareEnvironment()
{
    Q_ASSERT(onGuiThread());
    Environment::instance();
}
