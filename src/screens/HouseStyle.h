#pragma once

#include <QProxyStyle>

class QAction;

/// The toolkit's own parts (menus, scroll bars, tool tips) drawn to go with the windows: flat, in the
/// application's palette.
class HouseStyle : public QProxyStyle {
    Q_OBJECT

public:
    HouseStyle();

    /// Has a menu's entry written as one that warns: what it does can't be undone.
    static void setDestructive(QAction &entry);

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};
