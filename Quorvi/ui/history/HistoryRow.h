#pragma once

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "Quorvi/ui/design/Card.h"
#include "Quorvi/ui/history/HistoryEnvironment.h"
#include "QuorviCore/locale/LocaleFormats.h"

namespace quorvi {

// One dictation of the history page. A row is used again for another record: making one costs more
// than filling it.
class HistoryRow : public Group {
    Q_DECLARE_TR_FUNCTIONS(HistoryRow)

public:
    // What a row asks of its page.
    struct Actions {
        std::function<void(const DictationRecord&)> copy;
        std::function<void(const DictationRecord&)> remove;
        std::function<void(const DictationRecord&, bool expanded)> expand;
        std::function<QWidget*(const QString& transcript)> makeRememberButton;
    };
    // The rows of a day share one background.
    struct Place {
        bool first = true;
        bool last = true;
        bool operator==(const Place&) const = default;
    };

    explicit HistoryRow(const Actions& actions);

    // Another record, or the same with another look.
    void show(const DictationRecord& record, const LocaleFormats& formats, bool expanded);
    void setPlace(Place place);
    void setCopied(bool copied);
    // The keyboard's focus goes from this row on to the widget.
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
