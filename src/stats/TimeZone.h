// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimeZone>

#include <filesystem>
#include <memory>

namespace clavo
{

/// The time zone whose days the keys are counted in. It may change at any time. Thread: main.
class TimeZone : public QObject
{
    Q_OBJECT

public:
    explicit TimeZone(QTimeZone zone);

    [[nodiscard]] const QTimeZone& current() const { return m_current; }
    void set(const QTimeZone& zone);

signals:
    void changed();

private:
    QTimeZone m_current;
};

/// The system's time zone: the one that this link leads to. It follows the link, for which it needs
/// a main loop. The variable TZ overrides the link.
[[nodiscard]] std::shared_ptr<TimeZone>
makeSystemTimeZone(const std::filesystem::path& link = "/etc/localtime");

} // namespace clavo
