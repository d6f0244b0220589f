#pragma once

#include <QProxyStyle>

namespace nrv::ui {

/// A field that has this property set to true shows a text that is typed and not entered.
inline constexpr const char* TypedProperty = "typed";

/// Fusion with flat boxes in the theme's colours, small indicators, and texts that are narrowed rather than cut off.
class FlatStyle : public QProxyStyle {
    Q_OBJECT
  public:
    FlatStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    void drawItemText(QPainter* painter, const QRect& place, int alignment, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role = QPalette::NoRole) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* result = nullptr) const override;
};

} // namespace nrv::ui
