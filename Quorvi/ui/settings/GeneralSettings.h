#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class LaunchAtLoginController;
class Switch;

// The settings section for the start at login. Main thread.
class GeneralSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(GeneralSettings)

public:
    explicit GeneralSettings(LaunchAtLoginController& loginItem);

protected:
    // Reads the status again, which another program may have changed.
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
