#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <vector>

#include "Quorvi/platform/CloudAccess.h"
#include "Quorvi/ui/widgets/Working.h"
#include "QuorviCore/async/TaskScope.h"

class QVBoxLayout;

namespace quorvi {

// The computers that share a folder: gives this one a name, and removes one that is gone. Hidden
// without a shared folder. Main thread.
class CloudComputersList : public QWidget, public Working {
    Q_DECLARE_TR_FUNCTIONS(CloudComputersList)

public:
    CloudComputersList(CloudAccess& cloud, Scheduler& scheduler);

    // Reads the list anew.
    void refresh();
    bool isWorking() const override { return !tasks_.isEmpty(); }

private:
    Task<void> read(std::stop_token stop);
    Task<void> rename(std::string name, std::stop_token stop);
    Task<void> remove(std::string id, std::stop_token stop);
    void show(const std::vector<CloudComputer>& computers);
    void addRow(const CloudComputer& computer);
    void askToRemove(const CloudComputer& computer);

    CloudAccess& cloud_;
    QWidget* rows_;
    QLineEdit* name_;
    QPushButton* rename_;
    QLabel* problem_;
    std::vector<CloudComputer> shown_;
    TaskHandle reading_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
