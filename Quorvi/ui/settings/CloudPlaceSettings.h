#pragma once

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>

#include "Quorvi/ui/settings/CloudAddress.h"
#include "Quorvi/ui/widgets/Working.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class CloudAccess;
class Picker;
class Preferences;

// Chooses where the user's computers share their data. Nothing changes before a button says so.
// Main thread.
class CloudPlaceSettings : public QWidget, public Working {
    Q_DECLARE_TR_FUNCTIONS(CloudPlaceSettings)

public:
    CloudPlaceSettings(CloudAccess& cloud, Preferences& preferences, Scheduler& scheduler);

    // Called when the user has confirmed a place, perhaps the present one.
    std::function<void()> onChosen;
    // Shows the present place, unless the user is choosing another one.
    void refresh();
    bool isWorking() const override { return !tasks_.isEmpty(); }

private:
    QWidget* folderFields();
    QWidget* serverFields();
    CloudAddress present() const;
    CloudAddress entered() const;
    std::string enteredAddress() const;
    void show(const CloudAddress& address);
    void showPlace();
    void browseForFolder();
    void browseForCertificate();
    void use();
    Task<void> storePassword(std::string address, std::stop_token stop);
    void choose(const std::string& address);

    CloudAccess& cloud_;
    Preferences& preferences_;
    Picker* place_;
    QLabel* explanation_;
    // Before the parts, whose making sets them.
    QLineEdit* folder_ = nullptr;
    QLineEdit* server_ = nullptr;
    QLineEdit* user_ = nullptr;
    QLineEdit* password_ = nullptr;
    QLineEdit* certificate_ = nullptr;
    QWidget* folderPart_;
    QWidget* serverPart_;
    QPushButton* use_;
    QLabel* problem_;
    std::string shown_;  // the address that the fields were filled from
    TaskScope tasks_;    // last: tasks end before what they use
};

}  // namespace quorvi
