#include "shared/same_value.h"

#include <algorithm>

namespace {

bool areSame(const QVariant &left, const QVariant &right);

bool areSame(const QVariantList &left, const QVariantList &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const QVariant &one, const QVariant &other) { return areSame(one, other); });
}

bool areSame(const QVariant &left, const QVariant &right)
{
    if (left.metaType() != right.metaType()) {
        return false;
    }
    switch (left.typeId()) {
    case QMetaType::QVariantMap:
        return isSame(left.toMap(), right.toMap());
    case QMetaType::QVariantList:
        return areSame(left.toList(), right.toList());
    default:
        return left == right;
    }
}

} // namespace

bool isSame(const QVariantMap &left, const QVariantMap &right)
{
    return std::equal(left.constKeyValueBegin(), left.constKeyValueEnd(), right.constKeyValueBegin(),
                      right.constKeyValueEnd(), [](const auto &one, const auto &other) {
                          return one.first == other.first && areSame(one.second, other.second);
                      });
}

bool isSame(const QList<QVariantMap> &left, const QList<QVariantMap> &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const QVariantMap &one, const QVariantMap &other) { return isSame(one, other); });
}
