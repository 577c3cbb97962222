#include "tests/support/ui/DesktopQt.h"

#include <QApplication>
#include <QEventLoop>
#include <QLocale>

#include "tests/support/Waiting.h"

namespace quorvi::test {

void startDesktopQt() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static const auto* only = new QApplication(count, arguments);  // outlives every static object
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    static_cast<void>(only);
}

bool inQtLoop(const std::function<bool()>& condition) {
    return eventually([&] {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    });
}

}  // namespace quorvi::test
