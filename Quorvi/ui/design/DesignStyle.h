#pragma once

#include <QProxyStyle>

class QApplication;

namespace quorvi {

// The Qt style of the program: flat controls in the palette's colours, with a ring around the one
// that has the focus.
class DesignStyle : public QProxyStyle {
public:
    DesignStyle();

    void polish(QPalette& palette) override;
    void polish(QWidget* widget) override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

    using QProxyStyle::polish;
};

// Installs the style, palette and accessible roles. Call once, before the first widget.
void installDesign(QApplication& application);

}  // namespace quorvi
