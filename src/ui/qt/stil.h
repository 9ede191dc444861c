// How push buttons look: flat and round, those of the layouts and those of the toolkit's own boxes alike.
#pragma once

#include <QProxyStyle>
#include <QStyleOptionButton>

namespace kalvora {

// Without a valid `back` in the colours of an ordinary button.
void zeichne_Knopf(QPainter& painter, const QStyleOptionButton& option, const QColor& fore = {},
                   const QColor& back = {});
QSize Knopfgröße(const QFontMetrics& metrics, const QString& text);

class Programmstil : public QProxyStyle {
    Q_OBJECT
public:
    Programmstil();
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
};

} // namespace kalvora
