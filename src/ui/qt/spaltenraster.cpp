#include "ui/qt/spaltenraster.h"

#include <algorithm>

namespace kalvora {

void Spaltenraster::anordnen(const std::vector<int>& wünsche, int breite, int mindest, int standard_fest) {
    std::vector<int> kanten{0};
    int vergeben = 0, teiler = 0;
    for (std::size_t s = 0; s < wünsche.size(); ++s) {
        if (s == 0)
            vergeben += wünsche[0] < 0 ? standard_fest : wünsche[0];
        else if (wünsche[s] < 0)
            ++teiler;
        else
            vergeben += wünsche[s];
    }
    const int rest = std::max(breite - vergeben, mindest * teiler);
    int x = 0, anteil = 0;
    for (std::size_t s = 0; s < wünsche.size(); ++s) {
        if (s == 0) {
            x += wünsche[0] < 0 ? standard_fest : wünsche[0];
        } else if (wünsche[s] < 0) {
            x += rest * (anteil + 1) / teiler - rest * anteil / teiler;
            ++anteil;
        } else {
            x += wünsche[s];
        }
        kanten.push_back(x);
    }
    const int fest = kanten.size() > 1 ? kanten[1] : 0;
    const int versatz = std::clamp(versatz_, 0, std::max(0, x - breite));
    if (kanten == kanten_ && breite == breite_ && versatz == versatz_) return;
    kanten_ = std::move(kanten);
    fest_ = fest;
    breite_ = breite;
    versatz_ = versatz;
    emit changed();
}

int Spaltenraster::inhalt() const {
    return kanten_.back();
}

int Spaltenraster::breite(int spalte) const {
    if (spalte < 0 || spalte >= spalten()) return 0;
    const auto s = static_cast<std::size_t>(spalte);
    return kanten_[s + 1] - kanten_[s];
}

int Spaltenraster::links(int spalte) const {
    const int x = kanten_[static_cast<std::size_t>(std::clamp(spalte, 0, spalten()))];
    return spalte < 1 ? x : x - versatz_;
}

int Spaltenraster::spalte_bei(int x) const {
    if (x < fest_) return 0;
    const int gesucht = x + versatz_;
    const auto hit = std::upper_bound(kanten_.begin(), kanten_.end(), gesucht);
    return hit == kanten_.end() ? -1 : static_cast<int>(hit - kanten_.begin()) - 1;
}

void Spaltenraster::set_versatz(int versatz) {
    versatz = std::clamp(versatz, 0, höchster_versatz());
    if (versatz == versatz_) return;
    versatz_ = versatz;
    emit changed();
}

void Spaltenraster::set_marked_col(int spalte) {
    if (spalte == marked_col_) return;
    marked_col_ = spalte;
    emit changed();
}

bool Spaltenraster::week_start(int spalte) const {
    return spalte >= 0 && spalte < static_cast<int>(week_starts_.size()) &&
           week_starts_[static_cast<std::size_t>(spalte)];
}

void Spaltenraster::set_month(int last_day, std::vector<bool> week_starts) {
    if (last_day == last_day_ && week_starts == week_starts_) return;
    last_day_ = last_day;
    week_starts_ = std::move(week_starts);
    emit changed();
}

} // namespace kalvora
