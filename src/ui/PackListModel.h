// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "packs/SoundPack.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace clavo
{

/// The available packs, sorted by category. Within a category they keep the order of the library.
/// Thread: main.
class PackListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        clavo::AppState* appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectedRowChanged)

public:
    enum Role {
        packIDRole = Qt::UserRole,
        nameRole,
        categoryRole, // The category's name in a manifest.
        categoryTitleRole,
        selectedRole, // The settings name this pack.
    };

    using QAbstractListModel::QAbstractListModel;

    void setAppState(AppState* state);

    [[nodiscard]] AppState* appState() const { return m_state; }
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    /// The first row with the selected pack's id; -1 if there is none.
    [[nodiscard]] int selectedRow() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void appStateChanged();
    void countChanged();
    void selectedRowChanged();

private:
    struct Row {
        QString packID;
        QString name;
        PackCategory category;
    };

    void readPacks();
    void readSelection();

    QPointer<AppState> m_state;
    std::vector<Row> m_rows;
};

} // namespace clavo
