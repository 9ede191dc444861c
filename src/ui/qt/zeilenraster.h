// Where the rows of a table lie. The fixed rows stand at the top, the others are scrolled by whole rows:
// `oben` is the first of them on the screen. Rows count from 0; lengths are device-independent pixels.
#pragma once

#include <vector>

namespace kalvora {

class Zeilenraster {
public:
    void anordnen(std::vector<int> höhen, int feste_Zeilen); // 0: a hidden row

    int zeilen() const { return static_cast<int>(kanten_.size()) - 1; }
    int fest() const { return fest_; }        // number of fixed rows
    int kopf() const { return kante(fest_); } // their height
    int inhalt() const { return kanten_.back(); }
    int höhe(int zeile) const { return kante(zeile + 1) - kante(zeile); }

    int oben() const { return oben_; }
    void set_oben(int zeile); // clamped to what there is
    // The largest `oben` that still fills a view of that height.
    int höchste_obere(int ansichtshöhe) const;
    bool ganz_sichtbar(int zeile, int ansichtshöhe) const;

    int y(int zeile) const; // on the screen; a row above `oben` lies above the heading's lower edge
    int zeile_bei(int bildschirm_y) const; // -1 below all
    // Last row that shows whole, `oben` at least: rows cut at the lower edge are not shown.
    int letzte_in(int ansichtshöhe) const;

private:
    int kante(int zeile) const;
    std::vector<int> kanten_{0};
    int fest_ = 0, oben_ = 0;
};

} // namespace kalvora
