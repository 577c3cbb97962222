#include "Quorvi/ui/widgets/Confirmation.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

constexpr int signSize = 36;
constexpr int textWidth = 340;

}  // namespace

void ask(QWidget* parent, Confirmation confirmation) {
    auto* box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(confirmation.title);
    box->setIconPixmap(symbolPixmap("exclamationmark.triangle", color(ColorRole::warning), signSize,
                                    box->devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    box->setText(confirmation.title);
    box->setInformativeText(confirmation.message);
    auto* destroy = button(confirmation.destroy, ButtonKind::destructive);
    auto* cancel = button(QCoreApplication::translate("Confirmation", "Cancel"));
    box->addButton(destroy, QMessageBox::DestructiveRole);
    box->addButton(cancel, QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(destroy, &QAbstractButton::clicked, box,
                     [effect = std::move(confirmation.onDestroy)] { effect(); });
    // Qt would make the box as narrow as possible, and the title as plain as the text.
    if (auto* grid = qobject_cast<QGridLayout*>(box->layout()))
        grid->addItem(new QSpacerItem(textWidth, 0), grid->rowCount(), grid->columnCount() - 1);
    if (auto* title = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
        title->setFont(textFont(TextStyle::heading));
    box->open();
}

}  // namespace quorvi
