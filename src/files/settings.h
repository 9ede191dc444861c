// The settings string of the shared configuration: 50 one-character positions, counted from 1.
#pragma once

#include "base/text.h"

namespace kalvora {

inline constexpr int SETTINGS_LÄNGE = 50;

class Settings {
public:
    // As written by a first start.
    static constexpr TextView STANDARD = u"0000000000000101110U½##K310030100####0000010000000";

    Settings() : werte_(STANDARD) {}
    explicit Settings(Text werte) : werte_(std::move(werte)) {}

    int Setting(int n) const; // the digit at position n; a letter, "#" or a missing position is 0
    Text SettingStr(int n, int länge) const;
    void SetSetting(int n, int wert); // one digit at a position that is there; fault 5 otherwise
    const Text& werte() const { return werte_; }

    // Brings an older string to the present form: length, country defaults of the leave letters, first month
    // of the leave year, special-leave letters. Of a longer string the first 50 characters count.
    void migrieren();

private:
    void ersetzen(int ab, TextView stück);
    Text werte_;
};

} // namespace kalvora
