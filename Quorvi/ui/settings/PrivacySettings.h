#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class Switch;
class SymbolLabel;

// The settings section for privacy: how speech is handled, and the system permissions. Main thread.
class PrivacySettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(PrivacySettings)

public:
    // `hasSettingsFor` tells which of the desktop's settings can be opened; null if all.
    PrivacySettings(AppModel& model, std::function<bool(PrivacyPane)> hasSettingsFor);

private:
    struct Permission {
        QString title;
        SymbolLabel* symbol;
        QLabel* label;
        QPushButton* manage;
        PrivacyPane pane;
        std::function<bool()> granted;
    };

    void addPermission(const QString& title, PrivacyPane pane, std::function<bool()> granted);
    void refresh();

    AppModel& model_;
    std::function<bool(PrivacyPane)> hasSettingsFor_;
    Switch* keep_;  // a recording that failed
    std::vector<Permission> permissions_;
    Subscription changes_;
};

}  // namespace quorvi
