#pragma once

#include <QIcon>
#include <QWidget>

namespace quorvi {

// The program's logo: a short sound wave on a rounded square in the accent colour.
class BrandMark : public QWidget {
public:
    explicit BrandMark(int size);
    QSize sizeHint() const override { return {size_, size_}; }

    static void paint(QPainter& painter, const QRectF& bounds, const QPalette& palette);
    // The colours of the installed icons, which ignore the desktop's palette.
    static QPalette launcherPalette();
    // For the title bar and the task list.
    static QIcon icon();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int size_;
};

}  // namespace quorvi
