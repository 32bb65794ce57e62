#include "declared.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaProperty>

namespace {

std::string describe(const QMetaProperty &property)
{
    QByteArray line = property.isWritable() ? "writable " : "";
    line += QByteArray(property.typeName()) + ' ' + property.name();
    if (property.isConstant()) {
        line += " constant";
    }
    if (property.hasNotifySignal()) {
        line += " -> " + property.notifySignal().methodSignature();
    }
    return line.toStdString();
}

template <typename Accept, typename Describe>
std::vector<std::string> describeMethods(const QMetaObject &meta, const Accept &accept,
                                         const Describe &describe)
{
    std::vector<std::string> result;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (accept(meta.method(index))) {
            result.push_back(describe(meta.method(index)).toStdString());
        }
    }
    return result;
}

bool isSignal(const QMetaMethod &method)
{
    return method.methodType() == QMetaMethod::Signal;
}

} // namespace

std::vector<std::string> declaredProperties(const QMetaObject &meta)
{
    std::vector<std::string> result;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        result.push_back(describe(meta.property(index)));
    }
    return result;
}

std::vector<std::string> declaredSignals(const QMetaObject &meta)
{
    return describeMethods(meta, isSignal,
                           [](const QMetaMethod &method) { return method.methodSignature(); });
}

std::vector<std::string> declaredInvokables(const QMetaObject &meta)
{
    return describeMethods(
        meta, [](const QMetaMethod &method) { return !isSignal(method); },
        [](const QMetaMethod &method) {
            return QByteArray(method.typeName()) + ' ' + method.methodSignature();
        });
}

std::vector<std::string> declaredEnumerators(const QMetaObject &meta, const char *name)
{
    std::vector<std::string> result;
    const QMetaEnum enumeration = meta.enumerator(meta.indexOfEnumerator(name));
    for (int index = 0; index < enumeration.keyCount(); ++index) {
        result.push_back(std::string(enumeration.key(index)) + " = " +
                         std::to_string(enumeration.value(index)));
    }
    return result;
}
