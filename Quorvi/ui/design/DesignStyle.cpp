#include "Quorvi/ui/design/DesignStyle.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>
#include <QTextEdit>

#include "Quorvi/ui/design/AccessibleRoles.h"
#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

constexpr int switchWidth = 36;
constexpr int switchHeight = 20;
constexpr int controlHeight = 32;
constexpr int symbolGap = 7;  // between a button's symbol and its text
constexpr int menuSign = 14;
constexpr int progressHeight = 8;

bool isSwitch(const QWidget* widget) {
    return widget && widget->property("quorviSwitch").toBool();
}

bool has(const QStyleOption* option, QStyle::StateFlag flag) {
    return option->state.testFlag(flag);
}

bool showsFocus(const QStyleOption* option) {
    return has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
}

// A focus ring outside the shape, or on its edge if there is no room.
void paintRing(QPainter& painter, const QRectF& shape, double radius, const QPalette& palette) {
    painter.setPen(QPen(color(ColorRole::accent, palette), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(shape.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
}

void paintFrame(QPainter& painter, const QRectF& bounds, const QColor& fill, const QColor& border) {
    painter.setPen(QPen(border, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(bounds.adjusted(0.5, 0.5, -0.5, -0.5), spacing::controlRadius,
                            spacing::controlRadius);
}

QColor raised(const QPalette& palette) {
    if (isHighContrast(palette)) return color(ColorRole::card, palette);
    return isDark(palette) ? mixed(color(ColorRole::card, palette), Qt::white, 0.08)
                           : color(ColorRole::card, palette);
}

QColor touched(QColor fill, const QStyleOption* option) {
    const auto& palette = option->palette;
    if (has(option, QStyle::State_Sunken)) return mixed(fill, color(ColorRole::ink, palette), 0.14);
    if (has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled))
        return mixed(fill, color(ColorRole::ink, palette), 0.06);
    return fill;
}

void paintButton(QPainter& painter, const QStyleOption* option, const QWidget* widget) {
    const auto& palette = option->palette;
    const QRectF bounds(option->rect);
    const auto kind = kindOf(widget);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool active = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On) ||
                        (enabled && has(option, QStyle::State_MouseOver));
    switch (kind) {
        case ButtonKind::primary: {
            const QColor accent = color(ColorRole::accent, palette);
            const QColor fill =
                enabled ? touched(accent, option)
                        : mixed(color(ColorRole::card, palette), palette.windowText().color(), 0.1);
            paintFrame(painter, bounds, fill, fill);
            break;
        }
        case ButtonKind::link:
            break;
        case ButtonKind::quiet:
            if (active) {
                const QColor fill = touched(color(ColorRole::card, palette), option);
                paintFrame(painter, bounds, fill, fill);
            }
            break;
        default:
            paintFrame(painter, bounds, touched(raised(palette), option),
                       color(ColorRole::hairline, palette));
    }
    if (showsFocus(option)) paintRing(painter, bounds, spacing::controlRadius, palette);
}

QColor buttonInk(const QStyleOption* option, const QWidget* widget) {
    const auto& palette = option->palette;
    if (!has(option, QStyle::State_Enabled))
        return palette.color(QPalette::Disabled, QPalette::ButtonText);
    switch (kindOf(widget)) {
        case ButtonKind::primary:
            return color(ColorRole::onAccent, palette);
        case ButtonKind::destructive:
            return color(ColorRole::danger, palette);
        case ButtonKind::link:
            return color(ColorRole::accent, palette);
        default:
            return palette.color(QPalette::WindowText);
    }
}

// Centres the symbol, the text and the arrow of a menu button together.
void paintButtonLabel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget) {
    const QColor ink = buttonInk(&option, widget);
    const int symbol = option.icon.isNull() ? 0 : option.iconSize.width();
    const int gap = symbol && !option.text.isEmpty() ? symbolGap : 0;
    const bool opensMenu = option.features & QStyleOptionButton::HasMenu;
    const int sign = opensMenu ? menuSign + symbolGap : 0;
    const int flags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic;
    const int text = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    int x = option.rect.x() + (option.rect.width() - symbol - gap - text - sign) / 2;
    const auto place = [&option](int left, int width) {
        return QStyle::visualRect(option.direction, option.rect,
                                  QRect(left, option.rect.y(), width, option.rect.height()));
    };
    if (symbol) {
        const auto mode = has(&option, QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled;
        option.icon.paint(&painter, place(x, symbol), Qt::AlignCenter, mode);
    }
    painter.setPen(ink);
    painter.drawText(place(x + symbol + gap, text), flags, option.text);
    if (!opensMenu) return;
    const QRect end = place(x + symbol + gap + text + symbolGap, menuSign);
    painter.drawPixmap(
        QPointF(end.x(), end.center().y() - menuSign / 2.0 + 0.5),
        symbolPixmap("chevron.down", ink, menuSign, painter.device()->devicePixelRatio()));
}

void paintSwitch(QPainter& painter, const QStyleOption* option) {
    const auto& palette = option->palette;
    const bool on = has(option, QStyle::State_On);
    const bool enabled = has(option, QStyle::State_Enabled);
    const QRectF bounds(option->rect.x(), option->rect.center().y() - switchHeight / 2 + 0.5,
                        switchWidth, switchHeight);
    const QColor card = color(ColorRole::card, palette);
    const QColor ink = color(ColorRole::ink, palette);
    QColor track = on ? color(ColorRole::accent, palette) : mixed(card, ink, 0.28);
    if (!enabled) track = mixed(card, track, 0.45);
    painter.setPen(isHighContrast(palette) ? QPen(ink, 1) : QPen(Qt::NoPen));
    painter.setBrush(track);
    painter.drawRoundedRect(bounds, switchHeight / 2.0, switchHeight / 2.0);
    const bool knobRight = on != (option->direction == Qt::RightToLeft);
    const double size = switchHeight - 6;
    painter.setPen(Qt::NoPen);
    painter.setBrush(on ? color(ColorRole::onAccent, palette) : QColor(Qt::white));
    painter.drawEllipse(
        QRectF(knobRight ? bounds.right() - size - 3 : bounds.x() + 3, bounds.y() + 3, size, size));
}

void paintField(QPainter& painter, const QStyleOption* option) {
    const auto& palette = option->palette;
    paintFrame(painter, QRectF(option->rect), color(ColorRole::field, palette),
               color(ColorRole::hairline, palette));
    if (has(option, QStyle::State_HasFocus))
        paintRing(painter, QRectF(option->rect), spacing::controlRadius, palette);
}

void paintPicker(QPainter& painter, const QStyleOptionComboBox* option) {
    const auto& palette = option->palette;
    const QRectF bounds(option->rect);
    paintFrame(painter, bounds, touched(raised(palette), option),
               color(ColorRole::hairline, palette));
    const QColor ink = has(option, QStyle::State_Enabled)
                           ? color(ColorRole::secondary, palette)
                           : palette.color(QPalette::Disabled, QPalette::ButtonText);
    const int size = 16;
    const bool mirrored = option->direction == Qt::RightToLeft;
    const QPointF corner(mirrored ? bounds.left() + 8 : bounds.right() - size - 8,
                         bounds.center().y() - size / 2.0);
    painter.drawPixmap(corner, symbolPixmap("chevron.up.chevron.down", ink, size,
                                            painter.device()->devicePixelRatio()));
    if (showsFocus(option)) paintRing(painter, bounds, spacing::controlRadius, palette);
}

void paintProgress(QPainter& painter, const QStyleOptionProgressBar& option) {
    const auto& palette = option.palette;
    QRectF bar(option.rect.x(), option.rect.center().y() - progressHeight / 2.0 + 0.5,
               option.rect.width(), progressHeight);
    const double radius = progressHeight / 2.0;
    painter.setPen(isHighContrast(palette) ? QPen(color(ColorRole::ink, palette), 1)
                                           : QPen(Qt::NoPen));
    painter.setBrush(mixed(color(ColorRole::page, palette), color(ColorRole::ink, palette), 0.14));
    painter.drawRoundedRect(bar, radius, radius);
    const int range = option.maximum - option.minimum;
    const double done = range > 0 ? double(option.progress - option.minimum) / range : 0;
    if (done <= 0) return;
    bar.setWidth(qMax<double>(progressHeight, bar.width() * qMin(done, 1.0)));
    if (option.direction == Qt::RightToLeft) bar.moveRight(option.rect.right());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(ColorRole::accent, palette));
    painter.drawRoundedRect(bar, radius, radius);
}

void paintScrollBar(QPainter& painter, const QStyle& style, const QStyleOptionSlider* option,
                    const QWidget* widget) {
    if (option->minimum == option->maximum) return;
    const QRect handle =
        style.subControlRect(QStyle::CC_ScrollBar, option, QStyle::SC_ScrollBarSlider, widget);
    const bool held = has(option, QStyle::State_Sunken) &&
                      option->activeSubControls == QStyle::SC_ScrollBarSlider;
    const QColor thumb =
        mixed(color(ColorRole::page, option->palette), color(ColorRole::ink, option->palette),
              held || has(option, QStyle::State_MouseOver) ? 0.5 : 0.28);
    const QRectF bar = QRectF(handle).adjusted(3, 3, -3, -3);
    const double radius = qMin(bar.width(), bar.height()) / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(thumb);
    painter.drawRoundedRect(bar, radius, radius);
}

}  // namespace

DesignStyle::DesignStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void DesignStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    palette = refined(palette);
}

void DesignStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QPushButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
        qobject_cast<QCheckBox*>(widget) || widget->inherits("QScrollBar"))
        widget->setAttribute(Qt::WA_Hover);
    if (auto* field = qobject_cast<QLineEdit*>(widget); field && field->textMargins().isNull())
        field->setTextMargins(6, 0, 6, 0);
}

int DesignStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
            if (isSwitch(widget)) return switchWidth;
            break;
        case PM_IndicatorHeight:
            if (isSwitch(widget)) return switchHeight;
            break;
        case PM_CheckBoxLabelSpacing:
            return 10;
        case PM_ScrollBarExtent:
            return 12;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int DesignStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const {
    // The list of a picker opens below it and marks the current choice.
    if (hint == SH_ComboBox_Popup) return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QSize DesignStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& size, const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton: {
            const auto* shown = qstyleoption_cast<const QStyleOptionButton*>(option);
            const auto kind = kindOf(widget);
            if (!shown) break;
            if (shown->text.isEmpty()) return {controlHeight, controlHeight};
            const int margin = kind == ButtonKind::link ? 1 : kind == ButtonKind::quiet ? 8 : 14;
            int width = shown->fontMetrics.size(Qt::TextShowMnemonic, shown->text).width();
            if (!shown->icon.isNull()) width += shown->iconSize.width() + symbolGap;
            if (shown->features & QStyleOptionButton::HasMenu) width += menuSign + symbolGap;
            result.setWidth(width + 2 * margin);
            result.setHeight(qMax(controlHeight, size.height() + 10));
            break;
        }
        case CT_ComboBox:
            result.setWidth(size.width() + 48);
            result.setHeight(qMax(controlHeight, size.height() + 10));
            break;
        case CT_LineEdit:
            result.setHeight(qMax(controlHeight + 2, size.height() + 10));
            break;
        case CT_CheckBox:
            if (isSwitch(widget)) result.setHeight(qMax(result.height(), switchHeight + 6));
            break;
        default:
            break;
    }
    return result;
}

QRect DesignStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                  SubControl part, const QWidget* widget) const {
    const auto* picker = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField && picker && !picker->editable)
        return visualRect(option->direction, option->rect, option->rect.adjusted(10, 0, -30, 0));
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void DesignStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (element) {
        case PE_PanelLineEdit:
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
                frame && frame->lineWidth > 0)
                paintField(*painter, option);
            break;
        case PE_FrameLineEdit:
            paintField(*painter, option);
            break;
        case PE_IndicatorCheckBox:
            if (isSwitch(widget))
                paintSwitch(*painter, option);
            else
                QProxyStyle::drawPrimitive(element, option, painter, widget);
            break;
        case PE_FrameFocusRect:
            if (!qobject_cast<const QPushButton*>(widget))
                paintRing(*painter, QRectF(option->rect), 6, option->palette);
            break;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    painter->restore();
}

void DesignStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (element == CE_PushButtonBevel) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintButton(*painter, option, widget);
        painter->restore();
        return;
    }
    if (element == CE_PushButtonLabel) {
        if (const auto* shown = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            painter->save();
            paintButtonLabel(*painter, *shown, widget);
            painter->restore();
            return;
        }
    }
    if (const auto* progress = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
        element == CE_ProgressBar && progress) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintProgress(*painter, *progress);
        painter->restore();
        return;
    }
    if (element == CE_ShapedFrame &&
        (dynamic_cast<const TextArea*>(widget) || qobject_cast<const QTextEdit*>(widget))) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintField(*painter, option);
        painter->restore();
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void DesignStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
    const auto* picker = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const bool ours = (control == CC_ComboBox && picker && !picker->editable) ||
                      (control == CC_ScrollBar && slider);
    if (!ours) return QProxyStyle::drawComplexControl(control, option, painter, widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (control == CC_ComboBox)
        paintPicker(*painter, picker);
    else
        paintScrollBar(*painter, *proxy(), slider, widget);
    painter->restore();
}

void installDesign(QApplication& application) {
    installAccessibleRoles();
    application.setStyle(new DesignStyle);
}

}  // namespace quorvi
