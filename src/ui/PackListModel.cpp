// SPDX-License-Identifier: MIT
#include "ui/PackListModel.h"

#include <QCoreApplication>

#include <algorithm>

namespace clavo
{
namespace
{

QString title(PackCategory category)
{
    switch (category) {
    case PackCategory::linear:
        return QCoreApplication::translate("PackCategory", "Linear");
    case PackCategory::tactile:
        return QCoreApplication::translate("PackCategory", "Tactile");
    case PackCategory::clicky:
        return QCoreApplication::translate("PackCategory", "Clicky");
    case PackCategory::special:
        return QCoreApplication::translate("PackCategory", "Special");
    case PackCategory::custom:
        return QCoreApplication::translate("PackCategory", "My packs");
    }
    Q_UNREACHABLE();
}

} // namespace

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
        emit dataChanged(index(0), index(count() - 1), {selectedRole});
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
    case packIDRole:
        return row.packID;
    case nameRole:
        return row.name;
    case categoryRole:
        return QString::fromUtf8(rawValue(row.category));
    case categoryTitleRole:
        return title(row.category);
    case selectedRole:
        return m_state && row.packID == m_state->packID();
    default:
        return {};
    }
}

QHash<int, QByteArray> PackListModel::roleNames() const
{
    return {{packIDRole, "packID"},
            {nameRole, "name"},
            {categoryRole, "category"},
            {categoryTitleRole, "categoryTitle"},
            {selectedRole, "selected"}};
}

} // namespace clavo
