// The icons that are installed: one drawing that scales, and pictures that the program's own code
// draws.

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QImageReader>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ui/OffscreenEnvironment.h"

namespace quorvi::test {
namespace {

const auto icons = QString::fromStdString(sourceFolder() + "/packaging/icons/app.quorvi.Quorvi");

QImage drawing(const QString& name, int size) {
    QImageReader reader(name);
    reader.setScaledSize({size, size});
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The mean difference of a channel of a pixel, of 255.
double difference(const QImage& one, const QImage& other) {
    double sum = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                   std::abs(qBlue(a) - qBlue(b)) + std::abs(qAlpha(a) - qAlpha(b));
        }
    return sum / (4.0 * one.width() * one.height());
}

TEST(Icons, PicturesAndDrawingShowTheSameMark) {
    const TestFolder folder;
    Process tool({builtProgram("quorvi-icons"), folder.path()});
    ASSERT_EQ(tool.wait(), 0);
    for (const int size : {16, 22, 24, 32, 48, 64, 96, 128, 256, 512}) {
        const QImage picture(
            QString::fromStdString(folder.path() / (std::to_string(size) + ".png")));
        ASSERT_EQ(picture.size(), QSize(size, size));
        EXPECT_LT(difference(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                             drawing(icons + QStringLiteral(".svg"), size)),
                  2)
            << size;
    }
}

}  // namespace
}  // namespace quorvi::test
