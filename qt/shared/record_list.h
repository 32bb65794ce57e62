#pragma once

#include "shared/shared_object.h"

#include <QList>

#include <algorithm>
#include <memory>

/// A list of records that Python edits in place while the screens read it. Any thread, under a mutex of its
/// own.
///
/// It is a list of values: what is put in is copied, and two lists are equal if their records are. But each
/// record has its own place in memory, so a reference that Python holds survives whatever happens to the
/// list.
template <typename Record> class RecordList
{
public:
    using Reference = std::shared_ptr<Record>;

    RecordList() = default;
    RecordList(const RecordList &other)
        : m_records(other.copies())
    {}

    RecordList &operator=(const RecordList &other)
    {
        QList<Reference> records = other.copies();
        const InnerLocker lock(&m_mutex);
        m_records.swap(records);
        return *this;
    }

    qsizetype size() const
    {
        const InnerLocker lock(&m_mutex);
        return m_records.size();
    }

    /// Null for an index out of range.
    Reference at(qsizetype index) const
    {
        const InnerLocker lock(&m_mutex);
        return m_records.value(index);
    }

    void append(const Record &record)
    {
        auto copy = std::make_shared<Record>(record);
        const InnerLocker lock(&m_mutex);
        m_records.append(std::move(copy));
    }

    void removeAt(qsizetype index)
    {
        const InnerLocker lock(&m_mutex);
        if (index >= 0 && index < m_records.size()) {
            m_records.removeAt(index);
        }
    }

    /// The first record that fulfils the condition; null if there is none.
    template <typename Condition> Reference find(const Condition &condition) const
    {
        const QList<Reference> records = references();
        const auto found = std::find_if(records.begin(), records.end(),
                                        [&](const Reference &record) { return condition(*record); });
        return found != records.end() ? *found : nullptr;
    }

    /// Position of the first record equal to this one; -1 if there is none.
    qsizetype indexOf(const Record &wanted) const
    {
        const QList<Reference> records = references();
        const auto found = std::find_if(records.begin(), records.end(),
                                        [&](const Reference &record) { return *record == wanted; });
        return found != records.end() ? found - records.begin() : -1;
    }

    /// Records that compare alike keep no order among themselves.
    template <typename Less> void sort(const Less &less)
    {
        const InnerLocker lock(&m_mutex);
        std::sort(m_records.begin(), m_records.end(),
                  [&](const Reference &left, const Reference &right) { return less(*left, *right); });
    }

    friend bool operator==(const RecordList &left, const RecordList &right)
    {
        const QList<Reference> lefts = left.references();
        const QList<Reference> rights = right.references();
        return std::equal(lefts.begin(), lefts.end(), rights.begin(), rights.end(),
                          [](const Reference &one, const Reference &other) { return *one == *other; });
    }

private:
    QList<Reference> references() const
    {
        const InnerLocker lock(&m_mutex);
        return m_records;
    }

    QList<Reference> copies() const
    {
        QList<Reference> records = references();
        for (Reference &record : records) {
            record = std::make_shared<Record>(*record);
        }
        return records;
    }

    mutable InnerMutex m_mutex;
    QList<Reference> m_records;
};
