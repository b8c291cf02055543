// SPDX-License-Identifier: MIT
//
// clavo-icons PICTURE.svg SIZE OUTPUT.png
//
// Renders a square picture at one size, in pixels.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>
#include <span>

int main(int argc, char* argv[])
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    const int size = argc == 4 ? std::atoi(arguments[2]) : 0;
    if (size <= 0) {
        std::fputs("usage: clavo-icons PICTURE.svg SIZE OUTPUT.png\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer picture(QString::fromLocal8Bit(arguments[1]));
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        picture.render(&painter);
    }
    if (!picture.isValid() || !image.save(QString::fromLocal8Bit(arguments[3]))) {
        std::fprintf(stderr, "clavo-icons: cannot render %s\n", arguments[1]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
