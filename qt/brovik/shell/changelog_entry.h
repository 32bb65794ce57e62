#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QColor>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class Shell;

// clang-format off
#define CHANGELOG_ENTRY_PROPERTIES(P) \
    P(QString,     name,         setName,         "name",         QString(),     "Name of the package.") \
    P(QString,     date,         setDate,         "date",         QString(),     "Date of the entry, as the operator reads it.") \
    P(QString,     distribution, setDistribution, "distribution", QString(),     "Distribution that the version is for.") \
    P(QString,     version,      setVersion,      "version",      QString(),     "Version of the package.") \
    P(QString,     urgencyStr,   setUrgencyStr,   "urgency_str",  QString(),     "Urgency: low, medium, high, or another word.") \
    P(QStringList, changes,      setChanges,      "changes",      QStringList(), "The changes, in order.")
// clang-format on

/// One entry of a package's changelog. A value, although it has signals: it is copied and assigned. Lives on
/// the thread that made it; read and written from any thread, under its own mutex.
class ChangelogEntry : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT

    /// Colour of the urgency, as it was in the Shell when the urgency was last written or the entry copied.
    Q_PROPERTY(QColor color READ color NOTIFY colorChanged)

public:
    enum Urgency : int { Low, Medium, High, Other };
    Q_ENUM(Urgency)

    CHANGELOG_ENTRY_PROPERTIES(SHARED_PROPERTY)

public:
    /// An empty entry with the colours of the one Shell.
    ChangelogEntry();
    explicit ChangelogEntry(const Shell &shell);
    ChangelogEntry(const ChangelogEntry &other);
    ~ChangelogEntry() override = default;
    /// Drops all connections to the entry's signals and notifies of no field.
    ChangelogEntry &operator=(const ChangelogEntry &other);

    /// True as soon as one of name, date, distribution, version and urgency is the same in both.
    friend bool operator==(const ChangelogEntry &left, const ChangelogEntry &right);

    QColor color() const { return read(m_color); }

    /// All fields in one line.
    QString text() const;
    /// The same, with the name of the class.
    QString description() const;

Q_SIGNALS:
    void colorChanged();

private Q_SLOTS:
    void _setColor();

private:
    void followUrgency() const;
    void take(const ChangelogEntry &other);

    const Shell *m_shell = nullptr;
    QColor m_color;
};

/// Writes the description.
QDebug operator<<(QDebug debug, const ChangelogEntry &entry);
