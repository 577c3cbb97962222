#include "Quorvi/ui/corrections/CorrectionsSettings.h"

#include <QLocale>
#include <algorithm>
#include <exception>
#include <utility>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/ui/corrections/CorrectionEditor.h"
#include "Quorvi/ui/corrections/CorrectionRow.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/ProblemNote.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

// Rows shown at first, and added by "Show more", so that long lists stay fast.
constexpr std::size_t rowsAtATime = 50;

bool contains(const QString& text, const QString& query) {
    const QLocale locale;
    return text.contains(query, Qt::CaseInsensitive) ||
           locale.toLower(text).contains(locale.toLower(query));
}

}  // namespace

CorrectionsSettings::CorrectionsSettings(CorrectionStore& store, std::function<void()> testLearning)
    : Card(tr("Corrections"), "character.cursor.ibeam"),
      store_(store),
      testLearning_(std::move(testLearning)),
      visible_(rowsAtATime) {
    content().addWidget(
        secondaryText(tr("Keep brand names and preferred spellings consistent. Corrections apply "
                         "automatically before Quorvi pastes or saves your text.")));
    addLearning();
    problem_ = new ProblemNote;
    content().addWidget(problem_);
    addList();
    refresh();
    changes_ = store_.onChange([this] {
        refusal_.reset();
        refresh();
    });
}

void CorrectionsSettings::addLearning() {
    learns_ = new Switch(tr("Learn from my edits in other apps"));
    content().addWidget(learns_);
    content().addWidget(captionText(
        tr("Correct the text in the same field, then pause for two seconds. Quorvi saves short "
           "spelling corrections automatically and shows Correction saved. It watches for up to "
           "one minute after pasting. Mixed Greek and Latin spellings work too.")));
    learningStatus_ = bodyText();
    content().addWidget(learningStatus_);
    auto* test = button(tr("Test automatic learning"));
    test->setEnabled(static_cast<bool>(testLearning_));
    auto* testRow =
        row({captionText(tr("Click a field in another app within 10 seconds. Then change oxygen to "
                            "oxygon in the sample and pause. No recording or API usage.")),
             test});
    testRow->setStretch(0, 1);
    testRow->setSpacing(spacing::large);
    content().addLayout(testRow);
    connect(learns_, &QCheckBox::toggled, this,
            [this](bool on) { store_.setLearnsAutomatically(on); });
    connect(test, &QPushButton::clicked, this, [this] { testLearning_(); });
}

void CorrectionsSettings::addList() {
    content().addWidget(divider());
    count_ = secondaryText();
    count_->setWordWrap(false);
    auto* add = button(tr("Add correction"), ButtonKind::primary, "plus");
    auto* title = headingText(tr("Saved corrections"));
    title->setWordWrap(false);
    auto* heading = row({new SymbolLabel("text.badge.checkmark", 20, ColorRole::accent), title,
                         count_, nullptr, add});
    content().addLayout(heading);
    search_ =
        new SearchField(tr("Search corrections"), tr("Search corrections"), "text.magnifyingglass");
    search_->offerClearing(tr("Clear search"));
    content().addWidget(search_);
    none_ = secondaryText(
        tr("No saved corrections. Add the phrase Quorvi writes and the spelling you want."));
    content().addWidget(none_);
    list_ = new QVBoxLayout;
    list_->setSpacing(spacing::medium);
    content().addLayout(list_);
    more_ = button(tr("Show more"));
    content().addLayout(row({nullptr, more_, nullptr}));
    content().addWidget(captionText(
        tr("Matching ignores capitalization and extra spaces, and uses whole words. Your "
           "replacement keeps its exact spelling and capitalization. Saved rules sync between "
           "your Macs when iCloud sync is enabled.")));
    connect(add, &QPushButton::clicked, this, [this] { openEditor({}); });
    connect(search_, &QLineEdit::textChanged, this, [this] {
        visible_ = rowsAtATime;
        refreshList();
    });
    connect(more_, &QPushButton::clicked, this, [this] {
        visible_ += rowsAtATime;
        refreshList();
    });
}

void CorrectionsSettings::refresh() {
    learns_->show(store_.learnsAutomatically());
    learningStatus_->setText(store_.learnsAutomatically() ? shown(store_.learningStatus())
                                                          : tr("Automatic learning is off."));
    const auto& persistence = store_.persistenceError();
    problem_->show(persistence ? persistence : refusal_);
    refreshList();
}

std::vector<TextCorrection> CorrectionsSettings::matches() const {
    const auto& rules = store_.rules().rules();
    const QString query = search_->text();
    if (query.isEmpty()) return rules;
    std::vector<TextCorrection> found;
    std::ranges::copy_if(rules, std::back_inserter(found), [&](const TextCorrection& rule) {
        return contains(qt(rule.original), query) || contains(qt(rule.replacement), query);
    });
    return found;
}

void CorrectionsSettings::refreshList() {
    const auto all = store_.rules().rules().size();
    count_->setText(QLocale().toString(static_cast<qulonglong>(all)));
    count_->setAccessibleName(tr("Saved corrections") + QStringLiteral(": ") + count_->text());
    auto found = matches();
    none_->setVisible(all == 0);
    more_->setVisible(found.size() > visible_);
    if (found.size() > visible_) found.resize(visible_);
    const bool same = std::ranges::equal(
        found, rows_, {}, [](const TextCorrection& rule) { return rule.id; },
        [](const CorrectionRow* shown) { return shown->id(); });
    if (!same) rebuild(found);
    for (std::size_t i = 0; i < found.size(); ++i) rows_[i]->show(found[i]);
}

void CorrectionsSettings::rebuild(const std::vector<TextCorrection>& rules) {
    for (auto* old : rows_) {
        list_->removeWidget(old);
        old->hide();
        old->deleteLater();
    }
    rows_.clear();
    const CorrectionRow::Actions actions{
        [this](const std::string& id, bool on) { attempt([&] { store_.setEnabled(id, on); }); },
        [this](const std::string& id) { edit(id); }, [this](const std::string& id) { remove(id); }};
    QWidget* before = search_;
    for (const auto& rule : rules) {
        auto* made = new CorrectionRow(rule, actions);
        list_->addWidget(made);
        rows_.push_back(made);
        before = made->follow(before);
    }
}

void CorrectionsSettings::attempt(const std::function<void()>& change) {
    try {
        change();
    } catch (const std::exception& error) {
        refusal_ = messageOf(error);
        refresh();
    }
}

// Moves the focus to the next rule.
void CorrectionsSettings::remove(const std::string& id) {
    const auto place = std::ranges::find(rows_, id, [](const auto* shown) { return shown->id(); });
    const auto index = static_cast<std::size_t>(place - rows_.begin());
    attempt([&] { store_.remove(id); });
    if (rows_.empty())
        search_->setFocus();
    else
        rows_[std::min(index, rows_.size() - 1)]->focusDelete();
}

void CorrectionsSettings::edit(const std::string& id) {
    const auto& rules = store_.rules().rules();
    const auto rule = std::ranges::find(rules, id, &TextCorrection::id);
    if (rule != rules.end()) openEditor(*rule);
}

void CorrectionsSettings::openEditor(TextCorrection rule) {
    auto* editor = new CorrectionEditor(store_, std::move(rule), std::nullopt, window());
    editor->open();
}

}  // namespace quorvi
