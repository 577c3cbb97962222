// A window with one field of each kind, for tests that need a Qt 6 application. The Tab key goes
// through them from top to bottom; the editor has the focus at the start. With --empty it has no
// text, with --endless the editor says that it has more children than any program can list.
#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <limits>

struct Endless : QAccessibleWidget {
    explicit Endless(QWidget* widget) : QAccessibleWidget(widget, QAccessible::List) {}
    int childCount() const override { return std::numeric_limits<int>::max(); }
    QAccessibleInterface* child(int) const override { return nullptr; }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--endless")))
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* edit = qobject_cast<QPlainTextEdit*>(object);
            return edit ? new Endless(edit) : nullptr;
        });
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Quit"));
    window.setWindowTitle(QStringLiteral("Qt fields"));
    QWidget fields;
    window.setCentralWidget(&fields);
    QVBoxLayout layout(&fields);

    QPlainTextEdit editor(QString::fromUtf8("αβγ😀 hello\nsecond"));
    if (application.arguments().contains(QStringLiteral("--empty"))) editor.clear();
    editor.setTabChangesFocus(true);
    QLineEdit line(QString::fromUtf8("αβ😀γ"));
    QLineEdit password(QStringLiteral("secret"));
    password.setEchoMode(QLineEdit::Password);
    QLineEdit readOnly(QStringLiteral("fixed"));
    readOnly.setReadOnly(true);
    QComboBox choice;
    choice.setEditable(true);
    choice.addItem(QStringLiteral("chosen"));
    QPushButton button(QStringLiteral("Press"));
    QLabel label(QStringLiteral("A label"));
    for (QWidget* widget : {static_cast<QWidget*>(&editor), static_cast<QWidget*>(&line),
                            static_cast<QWidget*>(&password), static_cast<QWidget*>(&readOnly),
                            static_cast<QWidget*>(&choice), static_cast<QWidget*>(&button),
                            static_cast<QWidget*>(&label)})
        layout.addWidget(widget);
    window.show();
    editor.setFocus();
    return application.exec();
}
