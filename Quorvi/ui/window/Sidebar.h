#pragma once

#include <QButtonGroup>
#include <QCoreApplication>
#include <QWidget>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;

// The list of pages, with the program's name at the bottom.
class Sidebar : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(Sidebar)

public:
    explicit Sidebar(AppModel& model);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    QWidget* footer();

    AppModel& model_;
    QButtonGroup items_;
    Subscription changes_;
};

}  // namespace quorvi
