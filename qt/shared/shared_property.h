#pragma once

#include <type_traits>

// A shared property stands once, as a line of its class's table of (type, QML name, setter, Python name,
// initial value, documentation). The class expands the table with SHARED_PROPERTY, the binding beside it with
// BIND_PROPERTY (python_property.h). The order of the table is the declared order of properties and signals.
// For example:
//
//     #define EXAMPLE_PROPERTIES(P)
//         P(int, progress, setProgress, "progress", 0, "Progress of the run, percent.")

/// How a setter takes its argument: small values by value, others by reference.
template <typename T>
using SharedArgument =
    std::conditional_t<std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(void *), T, const T &>;

/// A signal of the class in whose body this stands.
#define SHARED_SIGNAL(signal) &std::remove_pointer_t<decltype(this)>::signal

/// Property, getter, setter and change signal in the body of a SharedObject. `get` and `set` are what the
/// getter returns and what the setter does with its `value`.
#define SHARED_ACCESS(type, name, setter, get, set)                                                          \
public:                                                                                                      \
    Q_PROPERTY(type name READ name NOTIFY name##Changed)                                                     \
    type name() const                                                                                        \
    {                                                                                                        \
        return get;                                                                                          \
    }                                                                                                        \
    void setter(SharedArgument<type> value)                                                                  \
    {                                                                                                        \
        set;                                                                                                 \
    }                                                                                                        \
Q_SIGNALS:                                                                                                   \
    void name##Changed();

/// What stands once in an object, as a constant property: `get` is what the getter returns.
#define SHARED_FIXED(type, name, get, ...)                                                                   \
public:                                                                                                      \
    Q_PROPERTY(type name READ name CONSTANT)                                                                 \
    type name() __VA_ARGS__                                                                                  \
    {                                                                                                        \
        return get;                                                                                          \
    }

/// Property, getter, setter, change signal and member of one line of a table, in the body of a SharedObject.
#define SHARED_PROPERTY(type, name, setter, pyName, initial, doc)                                            \
    SHARED_ACCESS(type, name, setter, read(m_##name),                                                        \
                  change<type>(m_##name, value, SHARED_SIGNAL(name##Changed)))                               \
                                                                                                             \
private:                                                                                                     \
    type m_##name = initial;

/// A constant beside a property: the `...Default` of its name. Read without the mutex.
#define SHARED_CONSTANT(type, name, value)                                                                   \
    SHARED_FIXED(type, name, m_##name, const)                                                                \
                                                                                                             \
private:                                                                                                     \
    const type m_##name = value;

/// A part that lives as long as its owner; what follows is handed to its constructor.
#define SHARED_PART(type, name, ...)                                                                         \
    SHARED_FIXED(type *, name, &m_##name)                                                                    \
                                                                                                             \
private:                                                                                                     \
    type m_##name{__VA_ARGS__};

/// A property with its `...Default`.
#define SHARED_DEFAULTED(type, name, setter, pyName, initial, doc)                                           \
    SHARED_PROPERTY(type, name, setter, pyName, initial, doc)                                                \
    SHARED_CONSTANT(type, name##Default, initial)

/// A number with its bounds and its default: `...Min`, `...Max`, the value itself, `...Default`. Writing a
/// bound leaves the value alone; writing the value keeps it within the bounds of that moment.
#define SHARED_RANGED(type, name, setter, pyName, lowest, highest, initial, doc)                             \
    SHARED_PROPERTY(type, name##Min, setter##Min, pyName "_min", lowest, doc)                                \
    SHARED_PROPERTY(type, name##Max, setter##Max, pyName "_max", highest, doc)                               \
    SHARED_ACCESS(                                                                                           \
        type, name, setter, read(m_##name),                                                                  \
        changeWithin<type>(m_##name, value, m_##name##Min, m_##name##Max, SHARED_SIGNAL(name##Changed)))     \
                                                                                                             \
private:                                                                                                     \
    type m_##name = initial;                                                                                 \
    SHARED_CONSTANT(type, name##Default, initial)
