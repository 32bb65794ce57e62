#include "brovik/actuator/dout_model.h"

#include "shared/gui_thread.h"

#include <utility>

DOutModel::DOutModel(QObject *parent)
    : QAbstractListModel(parent)
{
    qRegisterMetaType<QList<DOut *>>();
    connect(this, &DOutModel::_addDoutSignal, this, &DOutModel::addDOut);
    connect(this, &DOutModel::_addDoutsSignal, this, &DOutModel::addDOuts);
    connect(this, &DOutModel::_setDoutsSignal, this, &DOutModel::takeSoon);
}

int DOutModel::rowCount(const QModelIndex &parent) const
{
    Q_ASSERT(onGuiThread());
    return parent.isValid() ? 0 : static_cast<int>(m_douts.size());
}

QVariant DOutModel::data(const QModelIndex &index, int role) const
{
    Q_ASSERT(onGuiThread());
    if (role != dOutRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    return QVariant::fromValue(m_douts.at(index.row()));
}

QHash<int, QByteArray> DOutModel::roleNames() const
{
    return {{dOutRole, QByteArrayLiteral("dout")}};
}

void DOutModel::requestSetDOuts(const QList<DOut *> &douts)
{
    ++m_setsWaiting;
    announce(*this, &DOutModel::_setDoutsSignal, douts);
    if (thread() == QThread::currentThread()) {
        takeNewest();
    }
}

void DOutModel::addDOut(DOut *dout)
{
    addDOuts({dout});
}

void DOutModel::addDOuts(const QList<DOut *> &douts)
{
    Q_ASSERT(onGuiThread());
    takeNewest();
    insert(douts);
}

void DOutModel::setDOuts(const QList<DOut *> &douts)
{
    Q_ASSERT(onGuiThread());
    m_newest.reset();
    removeAll();
    insert(douts);
}

/// At once if no newer list waits behind this one, else at the end of this turn of the event loop.
void DOutModel::takeSoon(const QList<DOut *> &douts)
{
    Q_ASSERT(onGuiThread());
    const bool isLast = --m_setsWaiting == 0;
    if (!isLast && !m_newest) {
        QMetaObject::invokeMethod(this, &DOutModel::takeNewest, Qt::QueuedConnection);
    }
    m_newest = douts;
    if (isLast) {
        takeNewest();
    }
}

void DOutModel::takeNewest()
{
    Q_ASSERT(onGuiThread());
    if (m_newest) {
        setDOuts(*std::exchange(m_newest, std::nullopt));
    }
}

void DOutModel::insert(const QList<DOut *> &douts)
{
    if (douts.isEmpty()) {
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(douts.size()) - 1);
    m_douts.append(douts);
    endInsertRows();
}

void DOutModel::removeAll()
{
    if (m_douts.isEmpty()) {
        return;
    }
    beginRemoveRows({}, 0, rowCount() - 1);
    m_douts.clear();
    endRemoveRows();
}
