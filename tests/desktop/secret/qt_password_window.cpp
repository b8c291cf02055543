// SPDX-License-Identifier: MIT
//
// qt_password_window FILE
//
// A window with a field for a name, which has the focus first, and one for a password. The length
// of the password is written to the file.
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit name;
    QLineEdit password;
    password.setEchoMode(QLineEdit::Password);
    layout.addWidget(&name);
    layout.addWidget(&password);
    QObject::connect(&password, &QLineEdit::textChanged, [](const QString& text) {
        QFile file(QApplication::arguments().value(1));
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray::number(text.size()));
    });
    window.show();
    name.setFocus();
    return QApplication::exec();
}
