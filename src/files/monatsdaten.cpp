#include "files/monatsdaten.h"

#include <algorithm>
#include <cstring>

#include "base/cp1252.h"

namespace kalvora {

void Monatsdaten::setzen(int N) {
    n_ = N;
    daten_.assign(static_cast<std::size_t>(N) * MONATE * TAGE, ' ');
}

void Monatsdaten::Monat_leeren(int monat) {
    if (n_ > 0) std::fill_n(zelle(monat, 1), static_cast<std::size_t>(n_) * TAGE, ' ');
}

std::size_t Monatsdaten::stelle(int monat, int i) const {
    if (monat < 1 || monat > MONATE || i < 1 || i > n_)
        throw Laufzeitfehler(9, u"Index außerhalb der Monatsdaten");
    return (static_cast<std::size_t>(monat - 1) * static_cast<std::size_t>(n_) +
            static_cast<std::size_t>(i - 1)) *
           TAGE;
}

bool Monatsdaten::Code_vorhanden(char code) const {
    return std::find(daten_.begin(), daten_.end(), code) != daten_.end();
}

bool Monatsdaten::belegt(int von, int bis) const {
    if (n_ == 0 || von > bis) return false;
    const char* ende = zelle(bis, n_) + TAGE;
    return std::any_of(zelle(von, 1), ende, [](char c) { return c != ' '; });
}

Schlüsselverzeichnis::Schlüsselverzeichnis(const std::vector<std::string>& schlüssel)
    : schlüssel_(schlüssel), gleich_(schlüssel.size() + 1, 0), nach_(schlüssel.size() + 1, 0) {
    std::size_t platz = 16;
    while (platz < schlüssel.size() * 2)
        platz *= 2;
    tafel_.assign(platz, 0);
    std::vector<int> letzter(schlüssel.size() + 1, 0); // of the first row of a key the last one so far
    std::vector<char> allein(schlüssel.size() + 1, false);
    for (std::size_t k = 0; k < schlüssel.size(); ++k) {
        if (schlüssel[k].empty()) continue; // a heading
        const int nr = static_cast<int>(k) + 1;
        std::size_t s = streuwert(schlüssel[k]) & (platz - 1);
        while (tafel_[s] && !gleich(schlüssel_[static_cast<std::size_t>(tafel_[s] - 1)], schlüssel[k]))
            s = (s + 1) & (platz - 1);
        if (!tafel_[s]) {
            tafel_[s] = nr;
            letzter[k + 1] = nr;
            allein[k + 1] = true;
            continue;
        }
        const auto erster = static_cast<std::size_t>(tafel_[s]);
        allein[erster] = false;
        gleich_[static_cast<std::size_t>(letzter[erster])] = nr;
        letzter[erster] = nr;
    }
    for (std::size_t nr = schlüssel.size(); nr > 0; --nr)
        nach_[nr - 1] = allein[nr] ? static_cast<int>(nr) : nach_[nr];
}

int Schlüsselverzeichnis::finden(std::string_view schlüssel) {
    if (schlüssel.empty()) return 0;
    // Equal keys are reached through the first of them, so the short cut holds only for keys that stand
    // alone.
    if (const int i = nächste_Zeile(schlüssel)) return i;
    const std::size_t maske = tafel_.size() - 1;
    for (std::size_t s = streuwert(schlüssel) & maske; tafel_[s]; s = (s + 1) & maske) {
        if (!gleich(schlüssel_[static_cast<std::size_t>(tafel_[s] - 1)], schlüssel)) continue;
        zuletzt_ = tafel_[s];
        return zuletzt_;
    }
    return 0;
}

std::uint32_t Schlüsselverzeichnis::streuwert(std::string_view s) {
    std::uint32_t h = 2166136261u;
    for (char c : s)
        h = (h ^ cp1252_klein(static_cast<std::uint8_t>(c))) * 16777619u;
    return h ^ (h >> 15);
}

bool Schlüsselverzeichnis::gleich(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return x == y || cp1252_klein(static_cast<std::uint8_t>(x)) ==
                                    cp1252_klein(static_cast<std::uint8_t>(y));
           });
}

} // namespace kalvora
