#include "ui/qt/plan_maler.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "ui/qt/farben.h"
#include "ui/qt/qt_text.h"

namespace kalvora {

namespace {

constexpr int RANDABSTAND = 8; // of a name to the table's edge
// The marking tints coloured cells less: their colour has a meaning.
constexpr double MARKIERUNG_ANTEIL = 0.28, BUNT_ANTEIL = 0.16, KOPFANTEIL = 0.22;

// Anchor and moving end of a selection in order.
struct Rechteck {
    int row_von, row_bis, col_von, col_bis;
    explicit Rechteck(const Selection& s)
        : row_von(std::min(s.row, s.row_sel)), row_bis(std::max(s.row, s.row_sel)),
          col_von(std::min(s.col, s.col_sel)), col_bis(std::max(s.col, s.col_sel)) {}
    bool enthält(int row, int col) const {
        return row >= row_von && row <= row_bis && col >= col_von && col <= col_bis;
    }
};

QFont vergrößert(QFont font, double faktor, bool fett) {
    font.setPointSizeF(font.pointSizeF() * faktor);
    font.setBold(fett);
    return font;
}

// A heading "Mo" CR "3": weekday and day number.
std::pair<QString, QString> Kopfteile(const Text& text) {
    const auto trenner = text.find_first_of(u"\r\n ");
    if (trenner == Text::npos) return {QString(), qt(text)};
    return {qt(TextView(text).substr(0, trenner)), qt(TextView(text).substr(trenner + 1)).trimmed()};
}

} // namespace

PlanMaler::PlanMaler(const PlanAnsicht& ansicht, QPainter& maler)
    : ansicht_(ansicht), table_(*ansicht.table()), spalten_(ansicht.columns()), zeilen_(ansicht.rows()),
      maler_(maler), normal_(ansicht.font()), fett_(vergrößert(ansicht.font(), 1.0, true)),
      klein_(vergrößert(ansicht.font(), 0.88, false)), wochentag_(vergrößert(ansicht.font(), 0.84, false)),
      fläche_(ansicht.viewport()->rect()), rumpf_(ansicht.body_rect()) {}

PlanMaler::Bereich PlanMaler::Zeilen() const {
    return {zeilen_.oben(), zeilen_.letzte_in(fläche_.height())};
}

PlanMaler::Bereich PlanMaler::Spalten() const {
    const int von = spalten_.spalte_bei(spalten_.fest()), bis = spalten_.spalte_bei(spalten_.breite() - 1);
    const int letzte = std::min(table_.cols(), spalten_.spalten()) - 1;
    return {std::max(1, von), bis < 0 ? letzte : std::min(bis, letzte)};
}

void PlanMaler::zeichnen() {
    const QColor hintergrund = table_.backdrop() == 0xFFFFFF ? farben::AUSSERHALB : qt(table_.backdrop());
    maler_.fillRect(fläche_, hintergrund);
    if (table_.rows() == 0 || table_.cols() == 0) return;
    if (table_.merged()) {
        Wochen();
        return;
    }
    const Bereich zeilen = Zeilen(), spalten = Spalten();
    maler_.save();
    maler_.setClipRect(rumpf_);
    Rumpf(zeilen, spalten);
    Markierung();
    Heute(false);
    maler_.restore();
    Namen(zeilen);
    maler_.save();
    maler_.setClipRect(QRect(spalten_.fest(), 0, fläche_.width(), zeilen_.kopf() + 1));
    Kopf(spalten);
    Heute(true);
    maler_.restore();
}

// --- cells

void PlanMaler::Rumpf(Bereich zeilen, Bereich spalten) {
    for (int row = zeilen.von; row <= zeilen.bis; ++row)
        for (int col = spalten.von; col <= spalten.bis; ++col)
            if (spalten_.breite(col) > 0 && zeilen_.höhe(row) > 0)
                maler_.fillRect(Feld(row, col), Grund(row, col));
    Gitter(zeilen, spalten);
    for (int row = zeilen.von; row <= zeilen.bis; ++row)
        for (int col = spalten.von; col <= std::min(spalten.bis, ansicht_.last_day_col()); ++col)
            if (spalten_.breite(col) > 0 && zeilen_.höhe(row) > 0) Zelle(row, col);
}

void PlanMaler::Gitter(Bereich zeilen, Bereich spalten) {
    const QColor linie = qt(table_.grid_colour());
    const int unten = std::min(zeilen_.y(zeilen.bis + 1), fläche_.height());
    const int ende = std::min(spalten.bis, ansicht_.last_day_col());
    for (int col = spalten.von; col <= ende; ++col) {
        const int x = spalten_.rechts(col);
        const bool wochenende = spalten_.week_start(col + 1) || col == ansicht_.last_day_col();
        Linie(x, rumpf_.top(), x, unten, wochenende ? farben::WOCHENGRENZE : linie);
    }
    for (int row = zeilen.von; row <= zeilen.bis; ++row) {
        if (zeilen_.höhe(row) == 0) continue;
        if (im_Band(row)) Zeilenband(row);
        const int y = zeilen_.y(row + 1);
        Linie(rumpf_.left(), y, spalten_.rechts(ende), y, linie);
    }
}

// A heading of one colour runs through as a band, without lines between its days.
void PlanMaler::Zeilenband(int row) {
    const QRect r(rumpf_.left(), zeilen_.y(row), spalten_.rechts(ansicht_.last_day_col()) - rumpf_.left(),
                  zeilen_.höhe(row));
    if (table_.HighLight() || table_.highlight_col() > 0) return; // its cells differ then
    maler_.fillRect(r, Grund(row, ansicht_.last_day_col()));
}

void PlanMaler::Zelle(int row, int col) {
    const Cell& cell = table_.cell(row, col);
    if (cell.text.empty()) return;
    const QRect r = Feld(row, col);
    if (cell.text.front() == FESTES_LEERZEICHEN) Schraffur(r, Grund(row, col));
    if (cell.text.front() != FESTES_LEERZEICHEN && cell.text != u" ") {
        maler_.setFont(cell.bold ? fett_ : normal_);
        maler_.setPen(qt(cell.fore));
        maler_.drawText(r, Qt::AlignCenter | Qt::TextSingleLine, qt(cell.text));
    }
    if (cell.bold) Ecke(r, cell.fore == cell.back ? farben::TEXT : qt(cell.fore));
}

// A person's free day: fine slanted lines over the day's ground.
void PlanMaler::Schraffur(const QRect& r, const QColor& grund) {
    maler_.save();
    maler_.setClipRect(r.adjusted(1, 1, 0, 0), Qt::IntersectClip);
    maler_.setRenderHint(QPainter::Antialiasing);
    maler_.setPen(QPen(gemischt(grund, farben::TEXT, 0.38), 1.0));
    for (int x = r.left() - r.height() + 3; x < r.right(); x += 6)
        maler_.drawLine(QPointF(x, r.bottom() + 1), QPointF(x + r.height(), r.top()));
    maler_.restore();
}

// A commented day is bold and wears a corner.
void PlanMaler::Ecke(const QRect& r, const QColor& farbe) {
    constexpr int SEITE = 6;
    const QPointF eck(r.right() + 0.5, r.top() + 1.0);
    maler_.save();
    maler_.setRenderHint(QPainter::Antialiasing);
    maler_.setPen(Qt::NoPen);
    maler_.setBrush(farbe);
    maler_.drawPolygon(QPolygonF{{eck, eck - QPointF(SEITE, 0), eck + QPointF(0, SEITE)}});
    maler_.restore();
}

// --- names

void PlanMaler::Namen(Bereich zeilen) {
    maler_.save();
    maler_.setClipRect(QRect(0, zeilen_.kopf(), spalten_.fest(), fläche_.height()));
    for (int row = zeilen.von; row <= zeilen.bis; ++row)
        if (zeilen_.höhe(row) > 0) Name(row);
    maler_.restore();
    const int unten = std::min(zeilen_.y(zeilen.bis + 1), fläche_.height());
    Linie(spalten_.fest(), 0, spalten_.fest(), unten, farben::RAND);
}

void PlanMaler::Name(int row) {
    const QRect r = Feld(row, 0);
    const Cell& cell = table_.cell(row, 0);
    maler_.fillRect(r, Grund(row, 0));
    if (markierte_Zeile(row)) maler_.fillRect(QRect(0, r.top(), 3, r.height()), farben::AKZENT);
    const QRect platz = r.adjusted(RANDABSTAND, 0, -RANDABSTAND / 2, 0);
    maler_.setFont(cell.bold || ist_Überschrift(row) ? fett_ : normal_);
    maler_.setPen(qt(cell.fore));
    const QString text = maler_.fontMetrics().elidedText(qt(cell.text), Qt::ElideRight, platz.width());
    maler_.drawText(platz, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text);
    Linie(r.left(), zeilen_.y(row + 1), spalten_.fest(), zeilen_.y(row + 1), qt(table_.grid_colour()));
}

// --- headings

void PlanMaler::Kopf(Bereich spalten) {
    if (zeilen_.kopf() == 0) return;
    const int ende = std::min(spalten.bis, ansicht_.last_day_col());
    for (int col = spalten.von; col <= ende; ++col) {
        const QRect r = Feld(0, col);
        if (r.width() > 0) Kopftext(r, col);
        const bool wochenende = spalten_.week_start(col + 1) || col == ansicht_.last_day_col();
        Linie(spalten_.rechts(col), 0, spalten_.rechts(col), r.height(),
              wochenende ? farben::WOCHENGRENZE : qt(table_.grid_colour()));
    }
    maler_.setClipping(false);
    const QRect eck = Feld(0, 0);
    maler_.fillRect(eck, farben::KOPF);
    maler_.setFont(fett_);
    maler_.setPen(farben::TEXT);
    maler_.drawText(eck.adjusted(RANDABSTAND, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                    qt(table_.cell(0, 0).text));
    Linie(spalten_.fest(), 0, spalten_.fest(), eck.height(), farben::RAND);
    Linie(0, zeilen_.kopf(), spalten_.rechts(ansicht_.last_day_col()), zeilen_.kopf(), farben::RAND);
}

void PlanMaler::Kopftext(const QRect& r, int col) {
    const Cell& cell = table_.cell(0, col);
    const QColor eigen = cell.back == 0xFFFFFF ? farben::KOPF : qt(cell.back);
    const QColor grund = markierte_Spalte(col) ? gemischt(eigen, farben::AKZENT, KOPFANTEIL) : eigen;
    maler_.fillRect(r, grund);
    const auto [tag, zahl] = Kopfteile(cell.text);
    const bool heute = col == spalten_.marked_col();
    const bool hell = Kontrast(farben::TEXT, grund) >= 4.5;
    const QColor stark = heute && Kontrast(farben::HEUTE, grund) >= 4.5 ? farben::HEUTE
                         : hell                                         ? farben::TEXT
                                                                        : QColor(Qt::white);
    const QColor ruhig = Kontrast(farben::TEXT_RUHIG, grund) >= 4.5 ? farben::TEXT_RUHIG : stark;
    maler_.setFont(wochentag_);
    maler_.setPen(heute ? stark : ruhig);
    maler_.drawText(QRect(r.left(), r.top() + 2, r.width(), r.height() / 2 - 1), Qt::AlignCenter, tag);
    maler_.setFont(fett_);
    maler_.setPen(stark);
    maler_.drawText(QRect(r.left(), r.top() + r.height() / 2 - 1, r.width(), r.height() / 2), Qt::AlignCenter,
                    zahl);
}

// One row of equal neighbours, each shown once in the middle of its run.
void PlanMaler::Wochen() {
    maler_.fillRect(fläche_, farben::KOPF);
    maler_.setFont(klein_);
    const int letzte = std::min(table_.cols(), spalten_.spalten()) - 1;
    for (int row = 0; row < table_.rows(); ++row) {
        maler_.setClipRect(QRect(spalten_.fest(), 0, fläche_.width(), fläche_.height()));
        for (int von = 1, nummer = 0; von <= letzte; ++nummer) {
            int bis = von;
            while (bis < letzte && table_.cell(row, bis + 1).text == table_.cell(row, von).text)
                ++bis;
            const QRect r(spalten_.links(von), zeilen_.y(row), spalten_.rechts(bis) - spalten_.links(von),
                          zeilen_.höhe(row));
            maler_.fillRect(r, farben::KOPF);
            maler_.setPen(farben::TEXT_RUHIG);
            const QString text = qt(table_.cell(row, von).text).trimmed();
            if (maler_.fontMetrics().horizontalAdvance(text) <= r.width())
                maler_.drawText(r, Qt::AlignCenter, text);
            Linie(spalten_.rechts(bis), r.top(), spalten_.rechts(bis), r.bottom() + 1, farben::WOCHENGRENZE);
            von = bis + 1;
        }
        maler_.setClipping(false);
        const QRect eck(0, zeilen_.y(row), spalten_.fest(), zeilen_.höhe(row));
        maler_.fillRect(eck, farben::KOPF);
        maler_.setPen(farben::TEXT_RUHIG);
        maler_.drawText(eck.adjusted(RANDABSTAND, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                        qt(table_.cell(row, 0).text));
        Linie(spalten_.fest(), eck.top(), spalten_.fest(), eck.bottom() + 1, farben::RAND);
        Linie(0, eck.bottom() + 1, spalten_.rechts(letzte), eck.bottom() + 1, farben::RAND);
    }
}

// --- overlays

void PlanMaler::Heute(bool im_Kopf) {
    const int col = spalten_.marked_col();
    if (col < 1 || spalten_.breite(col) == 0 || col > ansicht_.last_day_col()) return;
    const int unten = std::min(zeilen_.y(zeilen_.letzte_in(fläche_.height()) + 1), fläche_.height());
    const int x1 = spalten_.links(col), x2 = spalten_.rechts(col);
    Linie(x1, 0, x1, unten, farben::HEUTE, 2);
    Linie(x2, 0, x2, unten, farben::HEUTE, 2);
    if (im_Kopf) Linie(x1, 1, x2, 1, farben::HEUTE, 2);
    if (zeilen_.letzte_in(fläche_.height()) == zeilen_.zeilen() - 1 || zeilen_.kopf() == 0)
        Linie(x1, unten - 1, x2, unten - 1, farben::HEUTE, 2);
}

void PlanMaler::Markierung() {
    if (!table_.HighLight()) return;
    const Rechteck s(table_.selection());
    if (s.row_von < zeilen_.fest() || s.col_von < 1) return;
    const QRect r = Feld(s.row_von, s.col_von).united(Feld(s.row_bis, s.col_bis));
    maler_.save();
    QPen stift(farben::AKZENT, 2);
    stift.setJoinStyle(Qt::MiterJoin);
    maler_.setPen(stift);
    maler_.setBrush(Qt::NoBrush);
    maler_.drawRect(r.adjusted(1, 1, -1, -1));
    if (ansicht_.hasFocus()) { // the moving end, for the keys
        QPen punkte(farben::TEXT, 1, Qt::DotLine);
        punkte.setCosmetic(true);
        maler_.setPen(punkte);
        maler_.drawRect(Feld(table_.selection().row_sel, table_.selection().col_sel).adjusted(3, 3, -3, -3));
    }
    maler_.restore();
}

// --- questions

QColor PlanMaler::Grund(int row, int col) const {
    if (col > ansicht_.last_day_col()) return farben::AUSSERHALB;
    QColor grund = qt(table_.cell(row, col).back);
    if (row == table_.highlight_row() || (col > 0 && col == table_.highlight_col()))
        grund = Folie(grund, qt(table_.highlight_colour()));
    if (table_.HighLight() && Rechteck(table_.selection()).enthält(row, col))
        grund = gemischt(grund, farben::AKZENT, grund.hsvSaturation() < 40 ? MARKIERUNG_ANTEIL : BUNT_ANTEIL);
    return grund;
}

bool PlanMaler::ist_Überschrift(int row) const {
    return row >= table_.fixed_rows() && table_.row_kind(row) == RowKind::Heading;
}

bool PlanMaler::im_Band(int row) const {
    if (!ist_Überschrift(row)) return false;
    const Farbe farbe = table_.cell(row, 0).back;
    for (int col = 1; col <= ansicht_.last_day_col(); ++col)
        if (table_.cell(row, col).back != farbe || !table_.cell(row, col).text.empty()) return false;
    return true;
}

bool PlanMaler::markierte_Spalte(int col) const {
    const Rechteck s(table_.selection());
    return table_.HighLight() && col >= s.col_von && col <= s.col_bis;
}

bool PlanMaler::markierte_Zeile(int row) const {
    const Rechteck s(table_.selection());
    return table_.HighLight() && row >= s.row_von && row <= s.row_bis;
}

// Lines lie on the last pixel row before the given edge and have whole device pixels at every scale.
void PlanMaler::Linie(int x1, int y1, int x2, int y2, const QColor& farbe, double dicke) {
    const double dpr = maler_.device()->devicePixelRatioF();
    const double breite = std::max(1.0, std::floor(dicke * dpr)) / dpr;
    const bool senkrecht = x1 == x2;
    const QRectF r =
        senkrecht ? QRectF(x1 - breite, y1, breite, y2 - y1) : QRectF(x1, y1 - breite, x2 - x1, breite);
    maler_.fillRect(r, farbe);
}

} // namespace kalvora
