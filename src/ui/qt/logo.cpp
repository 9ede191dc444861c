#include "ui/qt/logo.h"

#include <QPixmap>
#include <array>

#include "ui/qt/farben.h"

namespace kalvora {

namespace {

// The coloured days of the sheet, 4 columns by 3 rows; 0 is a plain day.
constexpr std::array<QRgb, 12> TAGE{0,          0xFF6CCF6C, 0xFF6CCF6C, 0xFF6CCF6C, //
                                    0xFFF2A65A, 0,          0,          0xFFE87A7A, //
                                    0,          0xFF5AA9E6, 0xFF5AA9E6, 0};

void zeichne_Tage(QPainter& maler, const QRectF& feld) {
    const double breite = feld.width() / 4, höhe = feld.height() / 3, lücke = breite * 0.16;
    for (int i = 0; i < 12; ++i) {
        const int spalte = i % 4, zeile = i / 4;
        const QRectF tag(feld.left() + spalte * breite, feld.top() + zeile * höhe, breite, höhe);
        const QRgb farbe = TAGE[static_cast<std::size_t>(i)];
        maler.setBrush(farbe ? QColor::fromRgb(farbe) : QColor(0xDD, 0xE4, 0xEC));
        maler.drawRoundedRect(tag.adjusted(lücke / 2, lücke / 2, -lücke / 2, -lücke / 2), lücke, lücke);
    }
}

} // namespace

void zeichne_Logo(QPainter& maler, const QRectF& platz) {
    const double s = qMin(platz.width(), platz.height()), rund = s * 0.14;
    const QRectF blatt(platz.center().x() - s * 0.46, platz.center().y() - s * 0.46, s * 0.92, s * 0.92);
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    maler.setBrush(farben::AKZENT);
    maler.drawRoundedRect(blatt, rund, rund);
    maler.setBrush(Qt::white);
    const QRectF papier = blatt.adjusted(s * 0.06, s * 0.22, -s * 0.06, -s * 0.06);
    maler.drawRoundedRect(papier, rund * 0.6, rund * 0.6);
    for (const double x : {0.3, 0.7}) { // the two rings it hangs by
        const QPointF mitte(blatt.left() + blatt.width() * x, blatt.top() + s * 0.11);
        maler.drawEllipse(mitte, s * 0.045, s * 0.045);
    }
    zeichne_Tage(maler, papier.adjusted(s * 0.05, s * 0.05, -s * 0.05, -s * 0.05));
    maler.restore();
}

QIcon Programmsymbol() {
    QIcon symbol;
    for (const int seite : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap bild(seite, seite);
        bild.fill(Qt::transparent);
        QPainter maler(&bild);
        zeichne_Logo(maler, QRectF(0, 0, seite, seite));
        maler.end();
        symbol.addPixmap(bild);
    }
    return symbol;
}

} // namespace kalvora
