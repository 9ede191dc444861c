#include "files/settings.h"

#include <array>

#include "base/fehler.h"

namespace kalvora {

namespace {

constexpr int ALTE_LÄNGE = 30; // strings shorter than this know nothing of the leave letters
constexpr int FRANKREICH = 2;  // value of position 15
// Default leave and sickness letters (positions 20 to 24) by position 15.
constexpr std::array<TextView, 4> LANDESBUCHSTABEN{u"U½##K", u"V½##S", u"C½##M", u"V½##E"};

} // namespace

int Settings::Setting(int n) const {
    const char16_t c = zeichen(werte_, n);
    return ist_Ziffer(c) ? c - u'0' : 0;
}

Text Settings::SettingStr(int n, int länge) const {
    return Text(mitte(werte_, n, länge));
}

void Settings::SetSetting(int n, int wert) {
    if (n < 1 || n > static_cast<int>(werte_.size()) || wert < 0 || wert > 9)
        throw Laufzeitfehler(5, u"Unzulässige Einstellung " + ziffern(n) + u"=" + ziffern(wert));
    ersetzen(n, ziffern(wert));
}

void Settings::ersetzen(int ab, TextView stück) {
    werte_.replace(static_cast<size_t>(ab) - 1, stück.size(), stück);
}

void Settings::migrieren() {
    if (werte_.size() < ALTE_LÄNGE) {
        werte_.resize(ALTE_LÄNGE, u'0');
        const auto land = static_cast<size_t>(Setting(15));
        ersetzen(20, LANDESBUCHSTABEN[land < LANDESBUCHSTABEN.size() ? land : 0]);
        if (Setting(1) != 2) SetSetting(18, 1);
        SetSetting(28, Setting(10));
    }
    werte_.resize(SETTINGS_LÄNGE, u'0');
    const bool französisch = Setting(15) == FRANKREICH;
    if (zeichen(werte_, 31) == u'0') {
        SetSetting(30, französisch ? 1 : 0);
        SetSetting(31, französisch ? 6 : 1);
    }
    if (SettingStr(33, 5) == u"00000") ersetzen(33, französisch ? u"1R½##" : u"0####");
}

} // namespace kalvora
