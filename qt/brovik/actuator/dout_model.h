#pragma once

#include "brovik/actuator/dout.h"
#include "shared/announce.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <optional>

/// The outputs that the screens show, in the order that the backend chose. Lives on the GUI thread, and its
/// list is touched only there: other threads ask with the request functions, which return before the rows
/// have changed. Of the lists that came since the last turn of the event loop only the newest makes rows.
class DOutModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit DOutModel(QObject *parent);

    // One role alone: a delegate then also gets the object as `modelData`.
    static constexpr int dOutRole = Qt::UserRole + 1;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Any thread.

    void requestAddDOut(DOut *dout) { announce(*this, &DOutModel::_addDoutSignal, dout); }
    void requestAddDOuts(const QList<DOut *> &douts) { announce(*this, &DOutModel::_addDoutsSignal, douts); }
    void requestSetDOuts(const QList<DOut *> &douts);

Q_SIGNALS:
    void _addDoutSignal(DOut *dout);
    void _addDoutsSignal(const QList<DOut *> &douts);
    void _setDoutsSignal(const QList<DOut *> &douts);

public Q_SLOTS:
    void addDOut(DOut *dout);
    void addDOuts(const QList<DOut *> &douts);
    /// Replaces the list: all rows go, then the new ones come.
    void setDOuts(const QList<DOut *> &douts);

private:
    void takeSoon(const QList<DOut *> &douts);
    void takeNewest();
    void insert(const QList<DOut *> &douts);
    void removeAll();

    std::optional<QList<DOut *>> m_newest; ///< The list that has no rows yet.
    std::atomic<int> m_setsWaiting = 0;    ///< Requests of any thread that have not come here yet.
    QList<DOut *> m_douts;
};
