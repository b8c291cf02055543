// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>

#include <map>
#include <string>
#include <vector>

namespace clavo
{

/// The desktop's accessibility bus, which is the session's bus itself, and its registry.
class AccessibilityBus final : public QDBusVirtualObject
{
public:
    AccessibilityBus();
    ~AccessibilityBus() override;

    /// The events that clients have asked programs to send.
    [[nodiscard]] const std::vector<std::string>& registered() const { return m_registered; }

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override;
    [[nodiscard]] QString introspect(const QString& path) const override;

private:
    std::vector<std::string> m_registered;
    QDBusConnection m_bus;
};

/// A program with elements on the accessibility bus.
class AccessibleProgram final : public QDBusVirtualObject
{
public:
    static constexpr uint text = 61;
    static constexpr uint passwordText = 40;

    AccessibleProgram();
    ~AccessibleProgram() override;

    void add(const QString& element, uint role, const QString& parent = {});
    void giveKeysTo(const QString& element) { tellFocus(element, 1); }
    void takeKeysFrom(const QString& element) { tellFocus(element, 0); }
    void deactivateWindow();

    void hang() { m_hangs = true; }
    /// Answers the questions that have come since it hung.
    void recover();

    bool isFocused = false; // The answer of every element when asked for its state.
    int questions = 0;      // That have come.

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override;
    [[nodiscard]] QString introspect(const QString& path) const override;

private:
    bool answer(const QDBusMessage& question);

    struct Element {
        uint role = 0;
        QString parent;
    };

    void tellFocus(const QString& element, int isFocused);
    void send(const QString& path, const QString& interface, const QString& name,
              const QVariantList& arguments);

    std::map<QString, Element> m_elements;
    bool m_hangs = false;
    std::vector<QDBusMessage> m_unanswered;
    QString m_name;
    QDBusConnection m_bus;
};

} // namespace clavo
