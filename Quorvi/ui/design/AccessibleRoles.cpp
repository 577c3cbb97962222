#include <QAccessibleWidget>

#include "Quorvi/ui/design/Card.h"
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

// The class of the widget is asked for before its base classes are, so the first call decides.
QAccessibleInterface* ourInterface(const QString&, QObject* object) {
    if (auto* heading = dynamic_cast<HeadingLabel*>(object)) return new AccessibleHeading(heading);
    if (auto* card = dynamic_cast<Card*>(object))
        return new QAccessibleWidget(card, QAccessible::Grouping);
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
