// SPDX-License-Identifier: MIT
#pragma once

#include "ui/SettingsWindow.h"

#include "ui/windows/WindowReader.h"
#include "unit/app/AppStateFixture.h"

#include <QGuiApplication>
#include <QLocale>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace clavo
{

/// The settings window of the application over fake ports, on a display that shows nothing.
class SettingsFixture : public AppStateFixture, protected WindowReader
{
protected:
    using AppStateFixture::click;
    using AppStateFixture::press;
    using WindowReader::click;
    using WindowReader::press;
    using Tab = SettingsWindow::Tab;

    SettingsFixture() { QLocale::setDefault(QLocale("en_US")); }

    /// The window, which is made at the first call.
    SettingsWindow& settings()
    {
        if (!m_settings) {
            m_language = std::make_unique<LanguageSetting>(*defaults);
            m_settings =
                std::make_unique<SettingsWindow>(state(), *m_language, *platform.fileManager);
        }
        return *m_settings;
    }

    /// Opens the window at the tab and waits until it is on the display.
    QQuickWindow& open(std::optional<Tab> tab = {})
    {
        settings().open(tab);
        auto& opened = window();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&opened));
        return opened;
    }

    /// The one window of the interface.
    static QQuickWindow& window() { return *openWindows().at(0); }

    LanguageSetting& language()
    {
        settings();
        return *m_language;
    }

private:
    QQuickItem& content() override { return *window().contentItem(); }

    std::unique_ptr<LanguageSetting> m_language;
    std::unique_ptr<SettingsWindow> m_settings;
};

} // namespace clavo
