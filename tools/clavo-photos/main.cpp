// SPDX-License-Identifier: MIT
//
// clavo-photos PICTURE.png OUTPUT.jpg
//
// Makes a picture of half the size, for pages on which details do not matter.
#include <QImage>

#include <cstdio>
#include <cstdlib>
#include <span>

int main(int argc, char* argv[])
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    if (argc != 3) {
        std::fputs("usage: clavo-photos PICTURE.png OUTPUT.jpg\n", stderr);
        return EXIT_FAILURE;
    }
    constexpr int quality = 90;
    const QImage picture(QString::fromLocal8Bit(arguments[1]));
    const auto half =
        picture.scaled(picture.size() / 2, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (!half.save(QString::fromLocal8Bit(arguments[2]), "jpg", quality)) {
        std::fprintf(stderr, "clavo-photos: cannot turn %s into %s\n", arguments[1], arguments[2]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
