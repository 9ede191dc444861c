// One-based array: days, months, reasons, settings positions and staff rows count from one.
// Every access is checked; there is no spare slot 0.
#pragma once

#include <initializer_list>
#include <vector>

#include "base/fehler.h"

namespace kalvora {

template <class T, int Basis = 1>
class Feld {
public:
    Feld() = default;
    explicit Feld(int anzahl, const T& wert = T{}) : werte_(static_cast<std::size_t>(anzahl), wert) {}
    Feld(std::initializer_list<T> werte) : werte_(werte) {}

    T& operator()(int index) { return werte_[stelle(index)]; }
    const T& operator()(int index) const { return werte_[stelle(index)]; }

    static constexpr int unten() { return Basis; }
    int oben() const { return Basis + static_cast<int>(werte_.size()) - 1; } // Basis - 1 when empty
    int anzahl() const { return static_cast<int>(werte_.size()); }
    bool leer() const { return werte_.empty(); }
    bool gültig(int index) const { return index >= Basis && index <= oben(); }

    void anfügen(T wert) { werte_.push_back(std::move(wert)); }
    void setzen(int anzahl, const T& wert = T{}) { werte_.assign(static_cast<std::size_t>(anzahl), wert); }
    void leeren() { werte_.clear(); }
    void reservieren(int anzahl) { werte_.reserve(static_cast<std::size_t>(anzahl)); }

    auto begin() { return werte_.begin(); }
    auto end() { return werte_.end(); }
    auto begin() const { return werte_.begin(); }
    auto end() const { return werte_.end(); }
    friend bool operator==(const Feld&, const Feld&) = default;

private:
    std::size_t stelle(int index) const {
        if (!gültig(index)) throw Laufzeitfehler(9, u"Index außerhalb des gültigen Bereichs");
        return static_cast<std::size_t>(index - Basis);
    }
    std::vector<T> werte_;
};

} // namespace kalvora
