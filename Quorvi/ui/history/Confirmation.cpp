#include "Quorvi/ui/history/Confirmation.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "Quorvi/ui/design/Controls.h"

namespace quorvi {

void ask(QWidget* parent, Confirmation confirmation) {
    auto* box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(confirmation.title);
    box->setIcon(QMessageBox::Warning);
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
    box->open();
}

}  // namespace quorvi
