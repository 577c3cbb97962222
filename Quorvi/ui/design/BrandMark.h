#pragma once

#include <QIcon>
#include <QWidget>

namespace quorvi {

// The program's drawn mark: a short wave of sound on a rounded square of the accent colour.
class BrandMark : public QWidget {
public:
    explicit BrandMark(int size);
    QSize sizeHint() const override { return {size_, size_}; }

    static void paint(QPainter& painter, const QRectF& bounds, const QPalette& palette);
    // The colours of the mark outside of the program, where no palette of a desktop counts.
    static QPalette launcherPalette();
    // For the window's title bar and the desktop's lists.
    static QIcon icon();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int size_;
};

}  // namespace quorvi
