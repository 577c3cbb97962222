#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class LaunchAtLoginController;
class Switch;

// The settings' section on starting when the user signs in.
class GeneralSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(GeneralSettings)

public:
    explicit GeneralSettings(LaunchAtLoginController& loginItem);

protected:
    // Another program may have changed it since.
    void showEvent(QShowEvent* event) override;

private:
    void refresh();

    LaunchAtLoginController& loginItem_;
    Switch* launch_;
    QLabel* message_;
    QPushButton* open_;
    Subscription changes_;
};

}  // namespace quorvi
