#include "Quorvi/ui/window/Pages.h"

#include <QWidget>

#include "Quorvi/ui/history/HistoryPage.h"
#include "Quorvi/ui/insights/InsightsPage.h"
#include "Quorvi/ui/settings/SettingsPage.h"
#include "Quorvi/ui/window/DictationPage.h"

namespace quorvi {

QWidget* makePage(WindowPage page, const WindowServices& services) {
    switch (page) {
        case WindowPage::dictation:
            return new DictationPage(services);
        case WindowPage::settings:
            return new SettingsPage(services);
        case WindowPage::history:
            return new HistoryPage(services.history);
        case WindowPage::insights:
            return new InsightsPage(services.history);
    }
    return new QWidget;
}

}  // namespace quorvi
