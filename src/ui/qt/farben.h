// Colours of the windows. What the program chooses itself stands here and keeps a contrast of at least 4.5:1
// between text and ground; the plan's own colours come from its data.
#pragma once

#include <QColor>
#include <QPalette>

#include "base/farbe.h"

namespace kalvora {

inline QColor qt(Farbe farbe) {
    return QColor(rot(farbe), grün(farbe), blau(farbe));
}

namespace farben {
inline constexpr QColor FENSTER{0xF3, 0xF5, 0xF8};
inline constexpr QColor FLAECHE{0xFF, 0xFF, 0xFF};
inline constexpr QColor KOPF{0xE6, 0xEB, 0xF1};       // headings without a colour of their own
inline constexpr QColor AUSSERHALB{0xEC, 0xEF, 0xF3}; // days that the month does not have
inline constexpr QColor RAND{0xB9, 0xC2, 0xCD};       // frames of areas
inline constexpr QColor WOCHENGRENZE{0x8F, 0x9B, 0xA9};
inline constexpr QColor TEXT{0x1B, 0x26, 0x33};       // 14:1 on FENSTER
inline constexpr QColor TEXT_RUHIG{0x4C, 0x5A, 0x69}; // 6.4:1 on FENSTER, 5.7:1 on KOPF
inline constexpr QColor AKZENT{0x1B, 0x5E, 0xA8};     // 6.6:1 to white
inline constexpr QColor HEUTE{0xB4, 0x4B, 0x00};      // today's frame, 5.4:1 to white
inline constexpr QColor NOTIZ{0xFF, 0xF8, 0xD9};      // the floating box
} // namespace farben

// Contrast after the relative luminance of both colours: 1 (none) to 21 (black on white).
double Kontrast(const QColor& a, const QColor& b);

// `vorn` over `hinten`, 0 (nothing of it) to 1.
QColor gemischt(const QColor& hinten, const QColor& vorn, double anteil);
// As a coloured foil lies over a ground: white takes the foil's colour, colours stay told apart.
QColor Folie(const QColor& grund, const QColor& folie);

QPalette helle_Palette();

} // namespace kalvora
