#include "files/inidatei.h"

#include <algorithm>
#include <limits>

#include "base/cp1252.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView OHNE = u"void";
constexpr int TASUM_LÄNGE = 24;
constexpr int KLEINSTER_WERT = -120;
constexpr int NAMENSBREITE_AB = 285, NAMENSBREITE_BIS = 1200;
constexpr std::int64_t GESPERRT = -1;  // for the rest of this run
constexpr std::int64_t UNGELESEN = -2; // until a read succeeds: defaults must not replace what stands there
constexpr size_t ZAHL_LÄNGE = 11;      // of the smallest 32-bit number

// Leaves the reading of a file that is not as it should be; caught in this file alone.
struct Abweichung {
    bool am_Ende = false; // it is only too short
};

bool ist_Summenzeile(const Text& zeile) {
    return zeile.size() == TASUM_LÄNGE && zeile.find_first_not_of(u"01") == Text::npos;
}

class Leser {
public:
    explicit Leser(Dateikanal& kanal) : kanal_(kanal) {}
    Text Zeile() {
        if (kanal_.Dateiende()) throw Abweichung{true};
        return kanal_.Rohzeile();
    }
    void Kopf(TextView kopf) {
        if (Zeile() != kopf) throw Abweichung{};
    }
    std::int32_t Zahl(size_t höchstens = ZAHL_LÄNGE) {
        const Text zeile = Zeile();
        const TextView text = trimmen(zeile);
        const TextView betrag = text.starts_with(u'-') ? text.substr(1) : text;
        if (text.size() > höchstens || !nur_Ziffern(betrag)) throw Abweichung{};
        using Grenzen = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(std::clamp<long>(Val(text), Grenzen::min(), Grenzen::max()));
    }
    void Farbe() {
        if (!Farbe_aus_Hex(Zeile())) throw Abweichung{};
    }
    Text Wort() {
        Text zeile = Zeile();
        return zeile == OHNE ? Text() : zeile;
    }
    Text Summenzeile() {
        Text zeile = Zeile();
        if (!ist_Summenzeile(zeile)) throw Abweichung{};
        return zeile;
    }

private:
    Dateikanal& kanal_;
};

Anzeigewahl Standardwahl(const Konfiguration& k) {
    Anzeigewahl wahl;
    auto& f = wahl.Fensterdaten_;
    f(21) = k.Setting(25);
    f(22) = k.Setting(26);
    f(23) = k.Setting(27);
    f(27) = k.Setting(41);
    f(28) = k.Setting(42);
    f(29) = 1;
    f(fenster::NAMENSBREITE) = 300;
    return wahl;
}

Anzeigewahl auswerten(Leser&& datei) {
    Anzeigewahl wahl;
    auto& f = wahl.Fensterdaten_;
    datei.Kopf(u"[Kalvora]");
    for (int n = 0; n <= 20; ++n) {
        const std::int32_t wert = datei.Zahl();
        f(n) = wert < KLEINSTER_WERT ? 0 : wert;
    }
    datei.Kopf(u"[Grundfarben]");
    for (int n = 0; n < GRUNDFARBEN; ++n)
        datei.Farbe(); // the company's colours hold
    datei.Kopf(u"[Anzeigegruppe]");
    wahl.Gruppenauswahl = datei.Zahl();
    datei.Kopf(u"[Ordner]");
    for (Text& ordner : wahl.Ordner)
        ordner = Pfad_nativ(datei.Wort());
    datei.Kopf(u"[Settings]");
    for (int n = 21; n <= 24; ++n)
        f(n) = datei.Zahl(1);
    datei.Kopf(u"[TaSum]");
    wahl.TaSum = datei.Summenzeile();
    for (Text& weitere : wahl.weitere_TaSum)
        weitere = datei.Wort();
    datei.Kopf(u"[ExtSettings]");
    for (int n = 25; n <= 34; ++n)
        f(n) = n == fenster::NAMENSBREITE ? datei.Zahl() : datei.Zahl(1);
    datei.Kopf(u"[Font]");
    wahl.Schrift = datei.Wort();
    datei.Kopf(u"[Printer]");
    wahl.Drucker = datei.Wort();
    datei.Kopf(u"[SFBreite]");
    f(fenster::SF_BREITE_AN) = datei.Zahl();
    f(fenster::SF_BREITE) = datei.Zahl();
    return wahl;
}

// The one sum over all that the file holds. Each value counts with its place, so that a window's left edge
// moved by as much as its width changed is not taken for no change.
std::int64_t Summe(const Anzeigewahl& wahl) {
    std::uint64_t summe = 0;
    std::uint64_t platz = 0;
    const auto zahl = [&](std::int64_t wert) { summe += ++platz * static_cast<std::uint64_t>(wert); };
    const auto text = [&](const Text& zeichenkette) {
        zahl(static_cast<std::int64_t>(zeichenkette.size()));
        for (const char16_t c : zeichenkette)
            zahl(c);
    };
    for (int n = 0; n < fenster::ANZAHL; ++n)
        if (n != 20) zahl(wahl.Fensterdaten_(n)); // always written as 0
    zahl(wahl.Gruppenauswahl);
    for (const Text& ordner : wahl.Ordner)
        text(ordner);
    text(wahl.TaSum);
    for (const Text& weitere : wahl.weitere_TaSum)
        text(weitere);
    text(wahl.Schrift);
    text(wahl.Drucker);
    return static_cast<std::int64_t>(summe & 0x7FFF'FFFF'FFFF'FFFF);
}

// A line of its own, or "void" for what would not come back as it is.
Text Wort_als_Zeile(const Text& wort) {
    const bool schreibbar = !wort.empty() && cp1252_darstellbar(wort) &&
                            std::none_of(wort.begin(), wort.end(), [](char16_t c) { return c < u' '; });
    return schreibbar ? wort : Text(OHNE);
}

std::vector<Text> Zeilen(const Anzeigewahl& wahl, const Konfiguration& k) {
    const auto& f = wahl.Fensterdaten_;
    std::vector<Text> z{u"[Kalvora]"};
    const auto zahlen = [&](int von, int bis) {
        for (int n = von; n <= bis; ++n)
            z.push_back(ziffern(f(n)));
    };
    // A value that the reader would refuse must not cost the whole file.
    const auto einstellige = [&](int von, int bis) {
        for (int n = von; n <= bis; ++n)
            z.push_back(ziffern(n == fenster::NAMENSBREITE || (f(n) >= 0 && f(n) <= 9) ? f(n) : 0));
    };
    zahlen(0, 19);
    z.insert(z.end(), {u"0", u"[Grundfarben]"});
    for (int n = 0; n < GRUNDFARBEN; ++n)
        z.push_back(HexFarbe((k.Grundfarben.gültig(n) ? k.Grundfarben : Grundfarben_Standard())(n)));
    z.insert(z.end(), {u"[Anzeigegruppe]", ziffern(wahl.Gruppenauswahl), u"[Ordner]"});
    for (const Text& ordner : wahl.Ordner)
        z.push_back(Wort_als_Zeile(Pfad_gespeichert(ordner)));
    z.push_back(u"[Settings]");
    einstellige(21, 24);
    z.insert(z.end(), {u"[TaSum]", ist_Summenzeile(wahl.TaSum) ? wahl.TaSum : Anzeigewahl{}.TaSum});
    for (const Text& weitere : wahl.weitere_TaSum)
        z.push_back(Wort_als_Zeile(weitere));
    z.push_back(u"[ExtSettings]");
    einstellige(25, 34);
    z.insert(z.end(), {u"[Font]", Wort_als_Zeile(wahl.Schrift), u"[Printer]", Wort_als_Zeile(wahl.Drucker),
                       u"[SFBreite]"});
    zahlen(fenster::SF_BREITE_AN, fenster::SF_BREITE);
    return z;
}

} // namespace

// The copy with the later stamp; empty when there is none.
Text Inidatei::gültige_Datei() const {
    Text gültig;
    Zeitstempel zeit = 0;
    for (const Text& ordner : {platz_.Inipfad, platz_.Temppfad}) {
        if (ordner.empty()) continue;
        const Text pfad = Datei_finden(kanal_.fs(), ordner, platz_.Inidateiname);
        const auto info = kanal_.fs().info(pfad);
        const bool fehlt = info.nummer() == FEHLER_NICHT_GEFUNDEN || info.nummer() == FEHLER_ORDNER;
        if (!info && !fehlt) return pfad; // it may be there: the open will tell
        if (!info || (!gültig.empty() && info->time <= zeit)) continue;
        gültig = pfad;
        zeit = info->time;
    }
    return gültig;
}

void Inidatei::Inidatei_lesen(int Gruppen) {
    wahl_ = Standardwahl(konfig_.werte());
    if (summe_ != GESPERRT) summe_ = 0;
    const Text pfad = gültige_Datei();
    if (pfad.empty()) return;
    if (!kanal_.Datei_öffnen(pfad, Dateimodus::Input, Fehlerweg::IgnoreErrors)) {
        if (summe_ != GESPERRT) summe_ = UNGELESEN;
        log_.Logbuch_ergänzen(2, u"Fehler beim Öffnen der Datei " + platz_.Inidateiname);
        return;
    }
    try {
        wahl_ = auswerten(Leser(kanal_));
        kanal_.Datei_schließen();
    } catch (const Abweichung& abweichung) {
        kanal_.Datei_schließen();
        if (!abweichung.am_Ende)
            log_.Logbuch_ergänzen(2, u"Fehler beim Lesen der Datei " + platz_.Inidateiname);
        Dateien_entfernen();
        return;
    }
    begrenzen(Gruppen);
    if (summe_ != GESPERRT) summe_ = Summe(wahl_);
}

void Inidatei::begrenzen(int Gruppen) {
    auto& f = wahl_.Fensterdaten_;
    if (wahl_.Gruppenauswahl < 0 || wahl_.Gruppenauswahl >= Gruppen) wahl_.Gruppenauswahl = 0;
    f(fenster::NAMENSBREITE) = std::clamp(f(fenster::NAMENSBREITE), NAMENSBREITE_AB, NAMENSBREITE_BIS);
    if (konfig_.werte().Benutzerrolle == 0) f(fenster::TAGESSUMMEN) = 0;
}

bool Inidatei::schreiben_nach(const Text& ordner) {
    if (ordner.empty()) return false;
    if (!kanal_.Datei_öffnen(ordner + platz_.Inidateiname, Dateimodus::Output, Fehlerweg::IgnoreErrors))
        return false;
    for (const Text& zeile : Zeilen(wahl_, konfig_.werte()))
        kanal_.Rohzeile_schreiben(zeile);
    return kanal_.Datei_schließen() == 0;
}

void Inidatei::Inidatei_schreiben() {
    constexpr int MINIMIERT = 1;
    const std::int64_t summe = Summe(wahl_);
    if (wahl_.Fensterdaten_(fenster::ZUSTAND) == MINIMIERT || summe_ < 0 || summe == summe_) return;
    if (schreiben_nach(platz_.Inipfad))
        Datei_löschen(kanal_.fs(), Datei_finden(kanal_.fs(), platz_.Temppfad, platz_.Inidateiname));
    else if (!schreiben_nach(platz_.Temppfad)) {
        log_.Logbuch_ergänzen(2, u"Fehler beim Öffnen der Datei " + platz_.Inidateiname);
        return;
    }
    summe_ = summe;
}

void Inidatei::Dateien_entfernen() {
    for (const Text& ordner : {platz_.Inipfad, platz_.Temppfad}) {
        if (ordner.empty()) continue;
        const Text pfad = Datei_finden(kanal_.fs(), ordner, platz_.Inidateiname);
        if (Datei_vorhanden(kanal_.fs(), pfad)) Datei_löschen(kanal_.fs(), pfad);
    }
}

void Inidatei::Inidateien_löschen() {
    Dateien_entfernen();
    summe_ = GESPERRT;
}

} // namespace kalvora
