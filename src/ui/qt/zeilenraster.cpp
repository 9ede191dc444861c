#include "ui/qt/zeilenraster.h"

#include <algorithm>

namespace kalvora {

void Zeilenraster::anordnen(std::vector<int> höhen, int feste_Zeilen) {
    kanten_.assign(1, 0);
    kanten_.reserve(höhen.size() + 1);
    for (const int h : höhen)
        kanten_.push_back(kanten_.back() + h);
    fest_ = std::min(feste_Zeilen, zeilen());
    set_oben(oben_);
}

int Zeilenraster::kante(int zeile) const {
    return kanten_[static_cast<std::size_t>(std::clamp(zeile, 0, zeilen()))];
}

void Zeilenraster::set_oben(int zeile) {
    oben_ = std::clamp(zeile, fest_, std::max(fest_, zeilen() - 1));
}

int Zeilenraster::höchste_obere(int ansichtshöhe) const {
    const int beginn = inhalt() - (ansichtshöhe - kopf()); // where the last page would begin
    const auto hit = std::lower_bound(kanten_.begin(), kanten_.end(), beginn);
    const int zeile = static_cast<int>(hit - kanten_.begin());
    return std::clamp(zeile, fest_, std::max(fest_, zeilen() - 1));
}

bool Zeilenraster::ganz_sichtbar(int zeile, int ansichtshöhe) const {
    if (zeile < 0 || zeile >= zeilen()) return false;
    if (zeile < fest_) return true;
    return zeile >= oben_ && y(zeile) + höhe(zeile) <= ansichtshöhe;
}

int Zeilenraster::y(int zeile) const {
    return zeile < fest_ ? kante(zeile) : kopf() + kante(zeile) - kante(oben_);
}

int Zeilenraster::zeile_bei(int bildschirm_y) const {
    const int gesucht = bildschirm_y < kopf() ? bildschirm_y : bildschirm_y - kopf() + kante(oben_);
    const auto hit = std::upper_bound(kanten_.begin(), kanten_.end(), gesucht);
    if (hit == kanten_.end()) return -1;
    return std::max(0, static_cast<int>(hit - kanten_.begin()) - 1);
}

int Zeilenraster::letzte_in(int ansichtshöhe) const {
    const int grenze = ansichtshöhe - kopf() + kante(oben_);
    const auto hit = std::upper_bound(kanten_.begin(), kanten_.end(), grenze);
    return std::max(oben_, static_cast<int>(hit - kanten_.begin()) - 2);
}

} // namespace kalvora
