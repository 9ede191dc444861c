#include "ui/qt/stil.h"

#include <QPainter>
#include <algorithm>

#include "ui/qt/farben.h"

namespace kalvora {

void zeichne_Knopf(QPainter& painter, const QStyleOptionButton& option, const QColor& fore,
                   const QColor& back) {
    const auto is = [&](QStyle::StateFlag flag) { return option.state.testFlag(flag); };
    const bool enabled = is(QStyle::State_Enabled);
    const QColor ground = back.isValid() ? back : farben::FLAECHE;
    QColor face = ground;
    if (!enabled) face = gemischt(ground, farben::FENSTER, 0.7);
    if (is(QStyle::State_Sunken))
        face = gemischt(ground, farben::TEXT, 0.16);
    else if (is(QStyle::State_MouseOver) && enabled)
        face = gemischt(ground, farben::TEXT, 0.07);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool vorgabe = option.features.testFlag(QStyleOptionButton::DefaultButton);
    painter.setPen(vorgabe ? farben::AKZENT : gemischt(face, farben::TEXT, 0.42));
    painter.setBrush(face);
    painter.drawRoundedRect(frame, 4, 4);
    if (is(QStyle::State_HasFocus)) {
        painter.setPen(QPen(farben::AKZENT, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame.adjusted(1.5, 1.5, -1.5, -1.5), 3, 3);
    }
    const QColor text = back.isValid() ? fore : farben::TEXT;
    painter.setPen(enabled ? text : gemischt(text, face, 0.5));
    painter.drawText(option.rect.adjusted(6, 0, -6, 0), Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
}

QSize Knopfgröße(const QFontMetrics& metrics, const QString& text) {
    return {metrics.size(Qt::TextShowMnemonic, text).width() + 24, metrics.height() + 14};
}

Programmstil::Programmstil() : QProxyStyle(QStringLiteral("Fusion")) {}

void Programmstil::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element != CE_PushButton || !button)
        return QProxyStyle::drawControl(element, option, painter, widget);
    painter->save();
    zeichne_Knopf(*painter, *button);
    painter->restore();
}

QSize Programmstil::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const {
    constexpr int SCHMALSTER = 88; // side by side in a box
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (type != CT_PushButton || !button) return QProxyStyle::sizeFromContents(type, option, size, widget);
    return Knopfgröße(button->fontMetrics, button->text).expandedTo({SCHMALSTER, 0});
}

// Buttons show their texts alone.
int Programmstil::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* data) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

} // namespace kalvora
