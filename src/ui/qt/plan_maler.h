// Paints a table control's visible cells and the overlays above them: highlight, marking, today's column.
#pragma once

#include <QPainter>

#include "ui/qt/plan_ansicht.h"

namespace kalvora {

class PlanMaler {
public:
    PlanMaler(const PlanAnsicht& ansicht, QPainter& maler);
    void zeichnen();

private:
    struct Bereich {
        int von, bis; // both included; empty when von > bis
    };
    Bereich Zeilen() const;  // scrolled rows in view
    Bereich Spalten() const; // scrolled columns in view

    void Rumpf(Bereich zeilen, Bereich spalten);
    void Gitter(Bereich zeilen, Bereich spalten);
    void Zelle(int row, int col);
    void Zeilenband(int row);
    void Namen(Bereich zeilen);
    void Name(int row);
    void Kopf(Bereich spalten);
    void Kopftext(const QRect& r, int col);
    void Wochen();
    void Heute(bool im_Kopf);
    void Markierung();
    void Schraffur(const QRect& r, const QColor& grund);
    void Ecke(const QRect& r, const QColor& farbe);

    QColor Grund(int row, int col) const; // a cell's colour under the highlight
    bool ist_Überschrift(int row) const;
    bool im_Band(int row) const; // a heading of one colour from the name to the last day
    bool markierte_Spalte(int col) const;
    bool markierte_Zeile(int row) const;
    QRect Feld(int row, int col) const { return ansicht_.cell_rect(row, col); }
    void Linie(int x1, int y1, int x2, int y2, const QColor& farbe, double dicke = 1.0);

    const PlanAnsicht& ansicht_;
    const Table& table_;
    const Spaltenraster& spalten_;
    const Zeilenraster& zeilen_;
    QPainter& maler_;
    QFont normal_, fett_, klein_, wochentag_;
    QRect fläche_, rumpf_;
};

} // namespace kalvora
