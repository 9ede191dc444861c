#include "ui/konsole/skriptuhr.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace kalvora {

Zeitpunkt Skriptuhr::now() {
    if (echt()) return uhr_.now();
    constexpr long TAG = 24L * 60 * 60;
    const long sekunden = beginn_.stunde * 3600L + beginn_.minute * 60L + beginn_.sekunde +
                          static_cast<long>(std::floor(vergangen_ + 1e-6)) /* sums of 0.1 */;
    const Datum tag =
        Datum_aus(beginn_.tag.jahr, beginn_.tag.monat, beginn_.tag.tag) + static_cast<int>(sekunden / TAG);
    const int rest = static_cast<int>(sekunden % TAG);
    return {Kalendertag_aus(tag), rest / 3600, rest / 60 % 60, rest % 60};
}

void Skriptuhr::warten_bis(double zeitpunkt) {
    const double seconds = zeitpunkt - steady();
    if (!(seconds > 0)) return;
    if (echt())
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    else
        vergangen_ += seconds;
}

} // namespace kalvora
