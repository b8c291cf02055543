// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QVariantMap>

namespace clavo
{

/// The menu of a StatusNotifier item ("service/path") as its host sees it over D-Bus.
class ItemMenu
{
public:
    explicit ItemMenu(const QString& item);

    /// The entries' properties by their labels.
    [[nodiscard]] QMap<QString, QVariantMap> entries();
    void choose(const QString& label);

private:
    QString m_service;
    QString m_path;
    QMap<QString, int> m_numbers;
};

} // namespace clavo
