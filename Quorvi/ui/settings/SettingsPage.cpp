#include "Quorvi/ui/settings/SettingsPage.h"

#include <QEvent>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/corrections/CorrectionsSettings.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/history/HistorySettings.h"
#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"
#include "Quorvi/ui/settings/AccountSyncSettings.h"
#include "Quorvi/ui/settings/ApiKeySettings.h"
#include "Quorvi/ui/settings/DesktopSettings.h"
#include "Quorvi/ui/settings/DictationSettings.h"
#include "Quorvi/ui/settings/GeneralSettings.h"
#include "Quorvi/ui/settings/MicrophoneSettings.h"
#include "Quorvi/ui/settings/PrivacySettings.h"
#include "Quorvi/ui/settings/RecognitionSettings.h"
#include "Quorvi/ui/settings/SettingsSearch.h"
#include "Quorvi/ui/settings/SpeechServiceSettings.h"
#include "Quorvi/ui/updates/UpdateSettings.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

SettingsPage::SettingsPage(const WindowServices& services)
    : Page(tr("SET UP YOUR FLOW"), tr("Settings"), {}) {
    addSearch();
    auto& model = services.model;
    addSection(new GeneralSettings(services.loginItem));
    addSection(new DictationSettings(model));
    auto* appearance = new Card(tr("Recording appearance"), "macwindow");
    appearance->content().addWidget(new RecordingAppearanceSettings(model));
    addSection(appearance);
    addSection(new CorrectionsSettings(
        services.corrections, [&model] { model.armInsertionTest(AppModel::Sample::learning); }));
    addSection(new SpeechServiceSettings(model, services.scheduler));
    addSection(new ApiKeySettings(model, services.keys, services.scheduler, services.isKeyGiven));
    addSection(new MicrophoneSettings(model, services.scheduler));
    addSection(new RecognitionSettings(model));
    addSection(new AccountSyncSettings(services.sync, services.cloud, services.preferences,
                                       services.scheduler));
    addSection(new UpdateSettings(services.updater));
    addSection(new HistorySettings(services.history));
    addSection(new PrivacySettings(model, services.hasSettingsFor));
    addSection(new DesktopSettings(services.desktop, model, services.keyConsent));
    marks_ = new SearchMarks(widget());
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { sectionsChanged(); });
}

void SettingsPage::addSection(Card* section) {
    auto* place = new QWidget;
    auto* layout = new QVBoxLayout(place);
    layout->setContentsMargins({});
    layout->addWidget(section);
    place->setVisible(!section->isHidden());
    section->installEventFilter(this);
    add(place);
    sections_.push_back({section, place});
}

// --- the list of sections ---

std::vector<Card*> SettingsPage::shownSections() const {
    std::vector<Card*> shown;
    for (const auto& each : sections_)
        if (!each.place->isHidden()) shown.push_back(each.card);
    return shown;
}

QStringList SettingsPage::sections() const {
    QStringList names;
    for (const auto* card : shownSections()) names << card->accessibleName();
    return names;
}

int SettingsPage::currentSection() const {
    const auto shown = shownSections();
    if (shown.empty()) return -1;
    const auto& bar = *verticalScrollBar();
    // The last ones can't all be brought to the top.
    if (const auto chosen = std::ranges::find(shown, revealed_.card);
        chosen != shown.end() && bar.value() == revealed_.at)
        return static_cast<int>(chosen - shown.begin());
    if (bar.maximum() > 0 && bar.value() == bar.maximum())
        return static_cast<int>(shown.size()) - 1;
    // The first of which more than the end can be seen.
    const auto seen = std::ranges::find_if(shown, [&](const Card* card) {
        const int end = card->mapTo(widget(), QPoint(0, card->height())).y();
        return end > bar.value() + viewport()->height() / 8;
    });
    return static_cast<int>(std::min(seen, shown.end() - 1) - shown.begin());
}

void SettingsPage::reveal(int section) {
    const auto shown = shownSections();
    if (section < 0 || section >= static_cast<int>(shown.size())) return;
    auto* card = shown[static_cast<std::size_t>(section)];
    for (auto* child : card->findChildren<QWidget*>())
        if (child->isVisible() && child->isEnabled() && (child->focusPolicy() & Qt::TabFocus)) {
            child->setFocus(Qt::TabFocusReason);
            break;
        }
    verticalScrollBar()->setValue(card->mapTo(widget(), QPoint()).y() - spacing::large);
    revealed_ = {card, verticalScrollBar()->value()};
    sectionsChanged();
}

void SettingsPage::sectionsChanged() {
    if (onSectionsChanged) onSectionsChanged();
}

// A section that hides itself leaves no gap behind.
bool SettingsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::HideToParent || event->type() == QEvent::ShowToParent)
        for (const auto& each : sections_)
            if (each.card == watched) {
                each.place->setVisible(each.isWanted && !each.card->isHidden());
                sectionsChanged();
            }
    return Page::eventFilter(watched, event);
}

void SettingsPage::resizeEvent(QResizeEvent* event) {
    Page::resizeEvent(event);
    sectionsChanged();
}

// --- the search ---

void SettingsPage::addSearch() {
    query_ = new SearchField(tr("Search settings"), tr("Search settings"), "magnifyingglass");
    query_->offerClearing(tr("Clear search"));
    found_ = captionText();
    found_->hide();
    auto* both = new QVBoxLayout;
    both->setSpacing(spacing::small);
    both->addWidget(query_);
    both->addWidget(found_);
    column().addLayout(both);
    connect(query_, &QLineEdit::textChanged, this, [this] { search(); });
    connect(query_, &QLineEdit::returnPressed, this, [this] { revealNextMatch(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        query_->setFocus(Qt::ShortcutFocusReason);
        query_->selectAll();
    });
}

void SettingsPage::search() {
    const bool isSearching = !query_->text().trimmed().isEmpty();
    matches_.clear();
    match_ = -1;
    int count = 0;
    for (auto& each : sections_) {
        auto found = SettingsSearch::matches(*each.card, query_->text());
        each.isWanted = !isSearching || !found.empty();
        each.place->setVisible(each.isWanted && !each.card->isHidden());
        if (each.place->isHidden()) continue;
        count += !found.empty();
        matches_.insert(matches_.end(), found.begin(), found.end());
    }
    found_->setVisible(isSearching);
    found_->setText(count == 0
                        ? tr("No setting matches.")
                        : tr("%n sections match. Enter goes to the next match.", nullptr, count));
    marks_->mark(matches_);
    verticalScrollBar()->setValue(0);
    sectionsChanged();
}

void SettingsPage::revealNextMatch() {
    if (matches_.empty()) return;
    match_ = (match_ + 1) % static_cast<int>(matches_.size());
    ensureWidgetVisible(matches_[static_cast<std::size_t>(match_)], 0, spacing::huge);
}

}  // namespace quorvi
