#include "Quorvi/ui/design/AccessibleRoles.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

// A heading is named by its text.
class AccessibleHeading : public QAccessibleWidget {
public:
    explicit AccessibleHeading(QLabel* label)
        : QAccessibleWidget(label, QAccessible::Heading), label_(*label) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? label_.text() : QAccessibleWidget::text(kind);
    }

private:
    QLabel& label_;
};

// A picker, named by its current choice and labelled by the text beside it, like Qt's own combo
// box, which however can't be focused through the accessibility bus.
class AccessiblePicker : public QAccessibleWidget {
public:
    explicit AccessiblePicker(Picker* picker)
        : QAccessibleWidget(picker, QAccessible::ComboBox), picker_(*picker) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name || kind == QAccessible::Value
                   ? picker_.currentText()
                   : QAccessibleWidget::text(kind);
    }
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(picker_.view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child && child->object() == picker_.view() ? 0 : -1;
    }
    QStringList actionNames() const override {
        return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name != showMenuAction()) return QAccessibleWidget::doAction(name);
        if (picker_.view()->isVisible())
            picker_.hidePopup();
        else
            picker_.showPopup();
    }

private:
    Picker& picker_;
};

// Qt asks for the most derived class first, so the first call decides.
QAccessibleInterface* ourInterface(const QString&, QObject* object) {
    if (auto* heading = dynamic_cast<HeadingLabel*>(object)) return new AccessibleHeading(heading);
    if (auto* picker = dynamic_cast<Picker*>(object)) return new AccessiblePicker(picker);
    if (auto* group = dynamic_cast<Group*>(object))
        return new QAccessibleWidget(group, QAccessible::Grouping);
    if (auto* symbol = dynamic_cast<SymbolLabel*>(object))
        return new QAccessibleWidget(symbol, QAccessible::Whitespace);
    return nullptr;
}

}  // namespace

void installAccessibleRoles() {
    static const bool installed = [] {
        QAccessible::installFactory(ourInterface);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace quorvi
