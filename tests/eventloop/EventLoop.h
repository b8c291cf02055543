// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

#include <functional>

namespace clavo
{

/// A Qt event loop for one test.
class EventLoop
{
public:
    /// Runs until the condition holds; false if it does not within a minute.
    [[nodiscard]] static bool until(const std::function<bool()>& condition);

private:
    int m_argumentCount = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments};
};

} // namespace clavo
