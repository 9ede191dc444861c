// The border between the core's texts and lengths and those of Qt.
#pragma once

#include <QString>
#include <QWidget>

#include "base/text.h"

namespace kalvora {

inline QString qt(TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text aus_qt(const QString& text) {
    return text.toStdU16String();
}

// Stored lengths are twips (1/1440 inch); Qt counts in device-independent pixels of its logical resolution.
inline int Pixel_aus_Twips(int twips, const QWidget& auf) {
    return qRound(twips * auf.logicalDpiX() / 1440.0);
}
inline int Twips_aus_Pixel(int pixel, const QWidget& auf) {
    return qRound(pixel * 1440.0 / auf.logicalDpiX());
}

} // namespace kalvora
