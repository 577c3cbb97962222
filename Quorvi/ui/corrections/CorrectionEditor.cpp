#include "Quorvi/ui/corrections/CorrectionEditor.h"

#include <QEvent>
#include <exception>
#include <utility>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi {

namespace {

constexpr int editorWidth = 480;

// A field below the label that names it.
QVBoxLayout* labelled(const QString& text, QLineEdit* field) {
    auto* label = bodyText(text);
    label->setBuddy(field);
    field->setAccessibleName(text);
    auto* all = new QVBoxLayout;
    all->setSpacing(spacing::tiny);
    all->addWidget(label);
    all->addWidget(field);
    return all;
}

}  // namespace

CorrectionEditor::CorrectionEditor(CorrectionStore& store, TextCorrection rule,
                                   std::optional<QString> transcript, QWidget* parent)
    : QDialog(parent), store_(store), rule_(std::move(rule)), transcript_(std::move(transcript)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Remember a correction"));
    build();
    original_->setText(qt(rule_.original));
    replacement_->setText(qt(rule_.replacement));
    connect(original_, &QLineEdit::textChanged, this, [this] { edited(); });
    connect(replacement_, &QLineEdit::textChanged, this, [this] { edited(); });
    edited();
    ensurePolished();
    resize(editorWidth, 0);
    keepRoom();
    original_->setFocus();
}

void CorrectionEditor::build() {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    all->setSpacing(spacing::medium);
    all->addWidget(headingText(tr("Remember a correction")));
    all->addWidget(
        secondaryText(tr("Save a word or short phrase once. Quorvi will use your "
                         "preferred spelling in future dictations.")));
    original_ = new QLineEdit;
    original_->setPlaceholderText(tr("e.g. Russet Miner"));
    replacement_ = new QLineEdit;
    replacement_->setPlaceholderText(tr("e.g. russetmanor"));
    all->addLayout(labelled(tr("Quorvi writes"), original_));
    all->addLayout(labelled(tr("Replace with"), replacement_));
    all->addWidget(
        captionText(tr("Use the exact replacement you want, including capitals. This "
                       "saves a rule for future text; existing text stays as written.")));
    previewHeading_ = headingText(tr("Preview"));
    preview_ = contentText();
    all->addWidget(previewHeading_);
    all->addWidget(preview_);
    note_ = secondaryText();
    all->addWidget(note_);
    error_ = bodyText();
    auto palette = error_->palette();
    palette.setColor(QPalette::WindowText, color(ColorRole::danger));
    error_->setPalette(palette);
    all->addWidget(error_);
    all->addStretch(1);
    auto* cancel = button(tr("Cancel"));
    save_ = button(tr("Save correction"), ButtonKind::primary);
    save_->setDefault(true);
    all->addLayout(row({nullptr, cancel, save_}));
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(save_, &QPushButton::clicked, this, [this] { save(); });
    setMinimumWidth(editorWidth);
}

bool CorrectionEditor::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) keepRoom();
    return handled;
}

// Qt takes the minimum height from labels on one line, so on a small screen, or when a line is
// added, it would squeeze the fields.
void CorrectionEditor::keepRoom() {
    setMinimumHeight(layout()->totalHeightForWidth(qMax(width(), editorWidth)));
}

void CorrectionEditor::edited() {
    rule_.original = original_->text().toStdString();
    rule_.replacement = replacement_->text().toStdString();
    const auto problem = rule_.validationMessage();
    save_->setEnabled(!problem);
    const auto result = preview();
    const bool changes = result && *result != *transcript_;
    previewHeading_->setVisible(changes);
    preview_->setVisible(changes);
    if (changes) setContent(*preview_, *result);
    note_->setVisible(result && !changes);
    note_->setText(
        tr("That phrase does not match this transcript. The rule will still apply to "
           "future matches."));
    const bool bothGiven = !rule_.original.empty() && !rule_.replacement.empty();
    error_->setText(problem && bothGiven ? shown(*problem) : QString());
    error_->setVisible(!error_->text().isEmpty());
}

std::optional<QString> CorrectionEditor::preview() const {
    if (!transcript_ || rule_.validationMessage()) return std::nullopt;
    return qt(TextCorrections({rule_}).apply(transcript_->toStdString()));
}

void CorrectionEditor::save() {
    rule_.learnedAutomatically = false;
    try {
        store_.save(rule_);
    } catch (const std::exception& error) {
        error_->setText(shown(messageOf(error)));
        error_->setVisible(true);
        return;
    }
    accept();
}

}  // namespace quorvi
