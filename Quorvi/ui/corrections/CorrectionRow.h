#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

class Switch;

// A saved rule in the list.
class CorrectionRow : public Group {
    Q_DECLARE_TR_FUNCTIONS(CorrectionRow)

public:
    struct Actions {
        std::function<void(const std::string& id, bool enabled)> setEnabled;
        std::function<void(const std::string& id)> edit;
        std::function<void(const std::string& id)> remove;
    };

    CorrectionRow(const TextCorrection& rule, const Actions& actions);

    const std::string& id() const { return id_; }
    void show(const TextCorrection& rule);
    using QWidget::show;
    void focusDelete() { delete_->setFocus(); }
    // Puts the row's controls after `before` in the tab order. Returns the last of them.
    QWidget* follow(QWidget* before);

private:
    std::string id_;
    QLabel* original_;
    QLabel* replacement_;
    QLabel* origin_;
    Switch* enabled_;
    QPushButton* edit_;
    QPushButton* delete_;
};

}  // namespace quorvi
