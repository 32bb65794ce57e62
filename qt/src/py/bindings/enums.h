#pragma once

#include <pybind11/pybind11.h>

#include <QByteArray>
#include <QMetaEnum>

/// Binds an enum of a screen with all its values, in their order. The screens' names begin with `prefix`,
/// which the backend's go without; one that begins with a digit then gets an underscore.
template <typename Enum>
pybind11::enum_<Enum> bindEnum(const pybind11::module_ &module, const char *name, const char *documentation,
                               QByteArrayView prefix = {})
{
    pybind11::enum_<Enum> bound(module, name, documentation);
    const auto declared = QMetaEnum::fromType<Enum>();
    for (int index = 0; index < declared.keyCount(); ++index) {
        QByteArray key(declared.key(index));
        Q_ASSERT(key.startsWith(prefix));
        key.remove(0, prefix.size());
        if (key.front() >= '0' && key.front() <= '9') {
            key.prepend('_');
        }
        bound.value(key.constData(), static_cast<Enum>(declared.value(index)));
    }
    return bound;
}
