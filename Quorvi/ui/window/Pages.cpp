#include "Quorvi/ui/window/Pages.h"

#include <QWidget>

#include "Quorvi/ui/history/HistoryPage.h"
#include "Quorvi/ui/insights/InsightsPage.h"
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
            return new HistoryPage(services.history);
        case pageIndex::insights:
            return new InsightsPage(services.history);
    }
    return new QWidget;
}

}  // namespace quorvi
