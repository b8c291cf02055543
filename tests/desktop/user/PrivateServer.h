// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include <string>

namespace clavo
{

/// An X server for one test, which may break it. The destructor ends it.
class PrivateServer
{
public:
    /// The arguments follow those that every server is started with.
    explicit PrivateServer(QStringList arguments = {"-screen", "0", "1600x1200x24"});
    ~PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;

    [[nodiscard]] const std::string& display() const { return m_display; }

    void stop();
    void start(); // Again, under the same display number.

private:
    QStringList m_arguments;
    QProcess m_process;
    std::string m_display;
};

} // namespace clavo
