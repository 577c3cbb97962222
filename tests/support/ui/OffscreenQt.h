#pragma once

#include <QApplication>
#include <QLocale>
#include <QPalette>
#include <cstdlib>

#include "Quorvi/ui/design/DesignStyle.h"

namespace quorvi::test {

// An application on Qt's platform without a screen, in US English. One at a time; ends before the
// program does.
class OffscreenQt {
public:
    OffscreenQt() : application_(count_, arguments_) {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        installDesign(application_);
    }

private:
    bool chosen_ = setenv("QT_QPA_PLATFORM", "offscreen", 1) == 0;
    int count_ = 1;
    char name_[7] = "quorvi";
    char* arguments_[2] = {name_, nullptr};
    QApplication application_;
};

// A desktop's palette, light or dark.
inline QPalette desktopPalette(bool dark) {
    return dark ? QPalette(QColor(0x2B, 0x2D, 0x31), QColor(0x23, 0x25, 0x29))
                : QPalette(QColor(0xF2, 0xF3, 0xF5), QColor(0xF5, 0xF6, 0xF8));
}

}  // namespace quorvi::test
