// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QStringList>

#include <optional>

namespace clavo
{

/// A process that ends with the test.
class Child
{
public:
    Child(const QString& program, const QStringList& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void write(const QByteArray& line);
    /// The lines of its standard output so far.
    [[nodiscard]] QStringList lines();

private:
    QProcess m_process;
    QByteArray m_output;
};

/// The real programs in which icons are shown. They come and go as a test wants, and end with it.
class HostPrograms
{
public:
    HostPrograms();
    ~HostPrograms();
    HostPrograms(const HostPrograms&) = delete;
    HostPrograms& operator=(const HostPrograms&) = delete;

    void startXEmbedHost();
    void stopXEmbedHost() { m_xembedHost.reset(); }
    void startStatusNotifierHost();
    void stopStatusNotifierHost();

    /// The items that the StatusNotifier hosts show, as "service/path".
    [[nodiscard]] static QStringList registeredItems();

private:
    std::optional<Child> m_xembedHost;
    std::optional<Child> m_statusNotifierHost;
};

} // namespace clavo
