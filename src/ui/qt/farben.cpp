#include "ui/qt/farben.h"

#include <algorithm>
#include <cmath>

namespace kalvora {

namespace {

double linear(double anteil) {
    return anteil <= 0.04045 ? anteil / 12.92 : std::pow((anteil + 0.055) / 1.055, 2.4);
}

double Leuchtdichte(const QColor& c) {
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

} // namespace

double Kontrast(const QColor& a, const QColor& b) {
    const auto [dunkel, hell] = std::minmax({Leuchtdichte(a), Leuchtdichte(b)});
    return (hell + 0.05) / (dunkel + 0.05);
}

QColor gemischt(const QColor& hinten, const QColor& vorn, double anteil) {
    const auto teil = [anteil](int h, int v) { return qRound(h + (v - h) * anteil); };
    return QColor(teil(hinten.red(), vorn.red()), teil(hinten.green(), vorn.green()),
                  teil(hinten.blue(), vorn.blue()));
}

QColor Folie(const QColor& grund, const QColor& folie) {
    return QColor(grund.red() * folie.red() / 255, grund.green() * folie.green() / 255,
                  grund.blue() * folie.blue() / 255);
}

QPalette helle_Palette() {
    using namespace farben;
    QPalette p(FENSTER);
    p.setColor(QPalette::Window, FENSTER);
    p.setColor(QPalette::WindowText, TEXT);
    p.setColor(QPalette::Base, FLAECHE);
    p.setColor(QPalette::AlternateBase, KOPF);
    p.setColor(QPalette::Text, TEXT);
    p.setColor(QPalette::PlaceholderText, TEXT_RUHIG);
    p.setColor(QPalette::Button, FENSTER);
    p.setColor(QPalette::ButtonText, TEXT);
    p.setColor(QPalette::Highlight, AKZENT);
    p.setColor(QPalette::HighlightedText, FLAECHE);
    p.setColor(QPalette::ToolTipBase, NOTIZ);
    p.setColor(QPalette::ToolTipText, TEXT);
    p.setColor(QPalette::Link, AKZENT);
    const QColor gesperrt(0x8A, 0x95, 0xA1);
    for (const auto rolle : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, rolle, gesperrt);
    p.setColor(QPalette::Disabled, QPalette::Highlight, RAND);
    return p;
}

} // namespace kalvora
