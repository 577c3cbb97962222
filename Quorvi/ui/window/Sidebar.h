#pragma once

#include <QButtonGroup>
#include <QCoreApplication>
#include <QStringList>
#include <QWidget>
#include <functional>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;

// The list of pages, with the program's name at the bottom.
class Sidebar : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(Sidebar)

public:
    explicit Sidebar(AppModel& model);

    // The parts of the selected page, listed below its entry, and the one that is being read.
    void showParts(const QStringList& names, int current);
    std::function<void(int)> onPartChosen;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    QWidget* footer();
    void makeParts(const QStringList& names);

    AppModel& model_;
    QButtonGroup items_;
    QWidget* parts_;
    QButtonGroup partItems_;
    Subscription changes_;
};

}  // namespace quorvi
