#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

class CorrectionRow;
class CorrectionStore;
class SearchField;
class Switch;

// The settings' section on corrections: automatic learning, and the saved rules.
class CorrectionsSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(CorrectionsSettings)

public:
    // `testLearning` begins the test of learning. The store outlives the section.
    CorrectionsSettings(CorrectionStore& store, std::function<void()> testLearning);

private:
    void addLearning();
    void addList();
    void refresh();
    void refreshList();
    void rebuild(const std::vector<TextCorrection>& rules);
    std::vector<TextCorrection> matches() const;
    void openEditor(TextCorrection rule);
    void edit(const std::string& id);
    // Does what the store may refuse, and says why it did.
    void attempt(const std::function<void()>& change);
    void remove(const std::string& id);

    CorrectionStore& store_;
    const std::function<void()> testLearning_;
    Switch* learns_;
    QLabel* learningStatus_;
    QWidget* problem_;
    QLabel* problemText_;
    QLabel* count_;
    SearchField* search_;
    QLabel* none_;
    QVBoxLayout* list_;
    QPushButton* more_;
    std::vector<CorrectionRow*> rows_;
    std::size_t visible_;
    std::string refusal_;
    Subscription changes_;
};

}  // namespace quorvi
