#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QStringList>
#include <functional>
#include <vector>

#include "Quorvi/ui/WindowServices.h"
#include "Quorvi/ui/widgets/Page.h"

namespace quorvi {

class Card;
class SearchField;
class SearchMarks;

// The page with all settings: sections one below the other, of which a search shows those that have
// what is searched for.
class SettingsPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(SettingsPage)

public:
    explicit SettingsPage(const WindowServices& services);

    // The headings of the sections that are shown, from top to bottom.
    QStringList sections() const;
    // The index of the one that is read: the revealed one until the page is scrolled, the one at
    // the top of the view, or the last one at the end. -1 if none is shown.
    int currentSection() const;
    // Scrolls to a section and puts the focus on its first control.
    void reveal(int section);

    // Called after a change of the above.
    std::function<void()> onSectionsChanged;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addSection(Card* section);
    void addSearch();
    void search();
    void revealNextMatch();
    std::vector<Card*> shownSections() const;
    void sectionsChanged();

    struct Section {
        Card* card;
        QWidget* place;        // around the card, which may hide itself
        bool isWanted = true;  // by the search
    };
    std::vector<Section> sections_;
    struct {
        Card* card = nullptr;
        int at = 0;  // the scroll bar's value
    } revealed_;
    SearchField* query_;
    QLabel* found_;
    SearchMarks* marks_;
    std::vector<QWidget*> matches_;
    int match_ = -1;  // the one that Enter has shown
};

}  // namespace quorvi
