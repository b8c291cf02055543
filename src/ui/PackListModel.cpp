// SPDX-License-Identifier: MIT
#include "ui/PackListModel.h"

#include "ui/PackCategoryTitle.h"

#include <algorithm>

namespace clavo
{

void PackListModel::setAppState(AppState* state)
{
    if (state == m_state)
        return;
    if (m_state)
        disconnect(m_state, nullptr, this, nullptr);
    m_state = state;
    if (m_state) {
        connect(m_state, &AppState::packsChanged, this, &PackListModel::readPacks);
        connect(m_state, &AppState::packIDChanged, this, &PackListModel::readSelection);
    }
    emit appStateChanged();
    readPacks();
}

void PackListModel::readPacks()
{
    beginResetModel();
    m_rows.clear();
    if (m_state) {
        for (const auto& pack : m_state->packs())
            m_rows.push_back({QString::fromStdString(pack.id), QString::fromStdString(pack.name),
                              pack.category});
    }
    std::ranges::stable_sort(m_rows, {}, &Row::category);
    endResetModel();
    emit countChanged();
    emit selectedRowChanged();
}

void PackListModel::readSelection()
{
    if (!m_rows.empty())
        emit dataChanged(index(0), index(count() - 1), {SelectedRole});
    emit selectedRowChanged();
}

int PackListModel::selectedRow() const
{
    if (!m_state)
        return -1;
    const auto selected = std::ranges::find(m_rows, m_state->packID(), &Row::packID);
    return selected == m_rows.end() ? -1 : static_cast<int>(selected - m_rows.begin());
}

int PackListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant PackListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case PackIDRole:
        return row.packID;
    case NameRole:
        return row.name;
    case CategoryRole:
        return QString::fromUtf8(rawValue(row.category));
    case CategoryTitleRole:
        return title(row.category);
    case SelectedRole:
        return m_state && row.packID == m_state->packID();
    default:
        return {};
    }
}

QHash<int, QByteArray> PackListModel::roleNames() const
{
    return {{PackIDRole, "packID"},
            {NameRole, "name"},
            {CategoryRole, "category"},
            {CategoryTitleRole, "categoryTitle"},
            {SelectedRole, "selected"}};
}

} // namespace clavo
