#include "shared/same_value.h"

#include <gmock/gmock.h>

#include <QString>

#include <iterator>

namespace {

QVariantMap withValue(const QVariant &value)
{
    return {{QStringLiteral("a"), value}};
}

const QVariant unlike[] = {
    QVariant(),
    QVariant::fromValue(nullptr),
    false,
    true,
    0,
    1,
    3,
    1.0,
    3.0,
    QStringLiteral(""),
    QStringLiteral("1"),
    QStringLiteral("3"),
    QByteArray("3"),
    QVariantList{},
    QVariantList{3},
    QVariantList{3.0},
    QVariantList{3, 3},
    QStringList{QStringLiteral("3")},
    QVariantMap{},
    withValue(3),
    withValue(3.0),
    withValue(withValue(QStringLiteral("3"))),
    withValue(withValue(QVariantList{3})),
};

/// The same value in memory of its own.
QVariant rebuilt(const QVariant &value)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        QVariantMap result;
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            result[entry.key()] = rebuilt(entry.value());
        }
        return result;
    }
    if (value.typeId() == QMetaType::QVariantList) {
        QVariantList result;
        for (const QVariant &element : value.toList()) {
            result.append(rebuilt(element));
        }
        return result;
    }
    return value;
}

} // namespace

TEST(SameValue, AValueIsTheSameAsItselfAlone)
{
    for (const QVariant &left : unlike) {
        for (const QVariant &right : unlike) {
            EXPECT_EQ(isSame(withValue(left), withValue(rebuilt(right))), &left == &right)
                << std::distance(unlike, &left) << ' ' << std::distance(unlike, &right);
        }
    }
}

TEST(SameValue, RecordsHaveTheSameKeys)
{
    EXPECT_FALSE(isSame(withValue(1), QVariantMap{{QStringLiteral("b"), 1}}));
    EXPECT_FALSE(isSame(withValue(1), QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), 1}}));
    EXPECT_FALSE(isSame(withValue(QVariant()), QVariantMap{}));
}

TEST(SameValue, ListsHaveTheSameOrderAndLength)
{
    using Records = QList<QVariantMap>;
    const Records records = {withValue(1), withValue(2)};
    EXPECT_TRUE(isSame(records, Records{withValue(1), withValue(2)}));
    EXPECT_FALSE(isSame(records, Records{withValue(2), withValue(1)}));
    EXPECT_FALSE(isSame(records, Records{withValue(1)}));
    EXPECT_FALSE(isSame(records, Records{withValue(1), withValue(2.0)}));
    EXPECT_FALSE(isSame(records, Records{}));
    EXPECT_TRUE(isSame(Records{}, Records{}));
}
