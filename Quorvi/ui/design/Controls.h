#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace quorvi {

enum class ButtonKind {
    regular,
    primary,      // the most likely action
    destructive,  // deletes data
    link,         // opens another page or program
    quiet,        // looks like plain text until the pointer is over it
};

// A button, with an optional symbol before its text; see Symbols.h.
QPushButton* button(const QString& text, ButtonKind kind = ButtonKind::regular,
                    const char* symbol = nullptr);
// A button that shows only a symbol; `name` is its tool tip and accessible name.
QPushButton* symbolButton(const QString& name, const char* symbol,
                          ButtonKind kind = ButtonKind::quiet);
void setKind(QPushButton& button, ButtonKind kind);
ButtonKind kindOf(const QWidget* button);

// A check box drawn as a sliding switch.
class Switch : public QCheckBox {
public:
    explicit Switch(const QString& text);
    // Sets the state without emitting signals.
    void show(bool on);
};

// A drop-down list. The mouse wheel scrolls the page instead of changing the choice.
class Picker : public QComboBox {
public:
    explicit Picker(const QString& accessibleName);
    // Sets the choice without emitting signals.
    void show(int index);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

class SymbolLabel;

// A search field with a decorative symbol.
class SearchField : public QLineEdit {
public:
    SearchField(const QString& accessibleName, const QString& placeholder, const char* symbol);
    // Adds a clear button with that accessible name.
    void offerClearing(const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    SymbolLabel* symbol_;
};

// A text field that is `lines` high. Tab moves the focus on.
class TextArea : public QPlainTextEdit {
public:
    TextArea(const QString& accessibleName, int lines);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace quorvi
