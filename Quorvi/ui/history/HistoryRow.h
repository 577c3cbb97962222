#pragma once

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "Quorvi/ui/history/HistoryEnvironment.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/locale/LocaleFormats.h"

namespace quorvi {

// One dictation on the history page. Rows are reused for other records, since creating one costs
// more than filling it.
class HistoryRow : public Group {
    Q_DECLARE_TR_FUNCTIONS(HistoryRow)

public:
    // What the page does for a row's buttons.
    struct Actions {
        std::function<void(const DictationRecord&)> copy;
        std::function<void(const DictationRecord&)> remove;
        std::function<void(const DictationRecord&, bool expanded)> expand;
        std::function<QWidget*(const QString& transcript)> makeRememberButton;
    };
    // The row's place in its day; the rows of a day share one background.
    struct Place {
        bool first = true;
        bool last = true;
        bool operator==(const Place&) const = default;
    };

    explicit HistoryRow(const Actions& actions);

    // Shows a record; also after a change of its look.
    void show(const DictationRecord& record, const LocaleFormats& formats, bool expanded);
    void setPlace(Place place);
    void setCopied(bool copied);
    // Makes `next` the tab stop after this row.
    void setLastBefore(QWidget* next) { setTabOrder(toggle_, next); }
    const DictationRecord& record() const { return entry_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showText();

    const Actions& actions_;
    DictationRecord entry_;
    bool expanded_ = false;
    bool copied_ = false;
    Place place_;
    QLabel* time_;
    QLabel* app_;
    QLabel* caption_;
    QLabel* text_;
    QPushButton* toggle_;
    QPushButton* copy_;
    QPushButton* delete_;
    QHBoxLayout* actionsRow_;
    QWidget* remember_ = nullptr;
};

}  // namespace quorvi
