// Draws the program's icon in the sizes of an icon theme, at build time:
//
//   quorvi-icons OUTPUT-FOLDER
//
// writes OUTPUT-FOLDER/<size>.png. Needs no display.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdio>
#include <cstdlib>

#include "Quorvi/ui/design/BrandMark.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: quorvi-icons OUTPUT-FOLDER\n");
        return 2;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QGuiApplication qt(argc, argv);
    for (const int size : {16, 22, 24, 32, 48, 64, 96, 128, 256, 512}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        const double margin = size * 6.0 / 128;  // as in the SVG
        const QRectF mark(margin, margin, size - 2 * margin, size - 2 * margin);
        quorvi::BrandMark::paint(painter, mark, quorvi::BrandMark::launcherPalette());
        painter.end();
        const auto file =
            QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(argv[1])).arg(size);
        if (!image.save(file)) {
            std::fprintf(stderr, "quorvi-icons: %s could not be written\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
