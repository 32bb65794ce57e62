#pragma once

#include <QList>
#include <QVariantMap>

// Whether writing a value would change nothing.

template <typename Member, typename Value> bool isSame(const Member &member, const Value &value)
{
    return member == value;
}

/// In depth, by type and value: QVariant itself takes 3 for 3.0 and true for 1.
bool isSame(const QVariantMap &left, const QVariantMap &right);
bool isSame(const QList<QVariantMap> &left, const QList<QVariantMap> &right);
