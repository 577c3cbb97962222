#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace quorvi {

enum class ButtonKind {
    regular,
    primary,      // the one that a person most likely wants
    destructive,  // deletes something
    link,         // leads elsewhere
    quiet,        // drawn like a text or a symbol until the pointer is over it
};

// A button, with a symbol before its text when one is named; see Symbols.h.
QPushButton* button(const QString& text, ButtonKind kind = ButtonKind::regular,
                    const char* symbol = nullptr);
// A quiet button that shows only a symbol; the name is its tool tip and what is read out.
QPushButton* symbolButton(const QString& name, const char* symbol,
                          ButtonKind kind = ButtonKind::quiet);
void setKind(QPushButton& button, ButtonKind kind);
ButtonKind kindOf(const QWidget* button);

// A check box that is drawn as a sliding switch.
class Switch : public QCheckBox {
public:
    explicit Switch(const QString& text);
    // Shows a state that has come from elsewhere: nobody is told.
    void show(bool on);
};

// A choice of one in a list. Turning the wheel above it scrolls the page, not the choice.
class Picker : public QComboBox {
public:
    explicit Picker(const QString& accessibleName);
    // Shows a choice that has come from elsewhere: nobody is told.
    void show(int index);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

class SymbolLabel;

// A field that is searched with; the symbol before its text is a picture only.
class SearchField : public QLineEdit {
public:
    SearchField(const QString& accessibleName, const QString& placeholder, const char* symbol);
    // Offers a button to clear it, of that name.
    void offerClearing(const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    SymbolLabel* symbol_;
};

// A field for several lines of text, so many of them high; Tab leaves it.
class TextArea : public QPlainTextEdit {
public:
    TextArea(const QString& accessibleName, int lines);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace quorvi
