#include "Quorvi/ui/window/Pages.h"

#include <QWidget>

#include "Quorvi/ui/settings/SettingsPage.h"
#include "Quorvi/ui/window/DictationPage.h"

namespace quorvi {

QWidget* makePage(int index, const WindowServices& services) {
    switch (index) {
        case pageIndex::dictation:
            return new DictationPage(services);
        case pageIndex::settings:
            return new SettingsPage(services);
        case pageIndex::history:
        case pageIndex::insights:
            break;
    }
    return new QWidget;
}

}  // namespace quorvi
