#include "dout_model.h"

DOutModel::DOutModel(QObject *parent)
    : QAbstractListModel(parent)
{
    qRegisterMetaType<QList<DOut *>>();
    connect(this, &DOutModel::_addDoutSignal, this, &DOutModel::addDOut);
    connect(this, &DOutModel::_addDoutsSignal, this, &DOutModel::addDOuts);
    connect(this, &DOutModel::_setDoutsSignal, this, &DOutModel::setDOuts);
}

int DOutModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_douts.size());
}

QVariant DOutModel::data(const QModelIndex &index, int role) const
{
    if (role != dOutRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    return QVariant::fromValue(m_douts.at(index.row()));
}

QHash<int, QByteArray> DOutModel::roleNames() const
{
    return {{dOutRole, QByteArrayLiteral("dout")}};
}

void DOutModel::addDOut(DOut *dout)
{
    addDOuts({dout});
}

void DOutModel::addDOuts(const QList<DOut *> &douts)
{
    if (douts.isEmpty()) {
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(douts.size()) - 1);
    m_douts.append(douts);
    endInsertRows();
}

void DOutModel::setDOuts(const QList<DOut *> &douts)
{
    removeAll();
    addDOuts(douts);
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
