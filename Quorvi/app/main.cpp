#include <QApplication>

#include "Quorvi/app/Application.h"

int main(int argc, char** argv) {
    QApplication qt(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvi"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVI_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quorvi"));
    QApplication::setQuitOnLastWindowClosed(false);
    return quorvi::runApplication(qt);
}
