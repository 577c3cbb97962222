#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <optional>
#include <vector>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

class CorrectionRow;
class CorrectionStore;
class ProblemNote;
class SearchField;
class Switch;

// The settings section for corrections: automatic learning and the saved rules. Main thread.
class CorrectionsSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(CorrectionsSettings)

public:
    // `testLearning` starts the learning test. The store outlives the section.
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
    // Runs `change` and shows the error that it throws.
    void attempt(const std::function<void()>& change);
    void remove(const std::string& id);

    CorrectionStore& store_;
    const std::function<void()> testLearning_;
    Switch* learns_;
    QLabel* learningStatus_;
    ProblemNote* problem_;
    QLabel* count_;
    SearchField* search_;
    QLabel* none_;
    QVBoxLayout* list_;
    QPushButton* more_;
    std::vector<CorrectionRow*> rows_;
    std::size_t visible_;
    std::optional<Message> refusal_;  // why the last change was refused
    Subscription changes_;
};

}  // namespace quorvi
