#pragma once

#include <QCoreApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <optional>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

class CorrectionStore;

// The dialog that edits a rule. Deletes itself when closed.
class CorrectionEditor : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(CorrectionEditor)

public:
    // With a transcript, shows a preview of the rule's effect. The store outlives the dialog.
    CorrectionEditor(CorrectionStore& store, TextCorrection rule, std::optional<QString> transcript,
                     QWidget* parent);

protected:
    bool event(QEvent* event) override;

private:
    void build();
    void edited();
    void keepRoom();
    void save();
    std::optional<QString> preview() const;

    CorrectionStore& store_;
    TextCorrection rule_;
    const std::optional<QString> transcript_;
    QLineEdit* original_;
    QLineEdit* replacement_;
    QLabel* previewHeading_;
    QLabel* preview_;
    QLabel* note_;
    QLabel* error_;
    QPushButton* save_;
};

}  // namespace quorvi
