// A capture file, on both ways into memory: as the shown month and as one of the 36. Every row taken has 31
// permitted codes, both ways agree, and a compacted month says the same as the one that it was made of.
#include "files/erfassungsdateien.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

namespace {

constexpr int NOVEMBER_2026 = 23; // months from January 2025 on

void Inhalt_prüfen(const Monatsinhalt& inhalt, const Codefilter& filter) {
    for (const Erfassungssatz& satz : inhalt.Erfassungsdaten) {
        fordere(satz.tage.size() == TAGE && satz.tage[30] == u' ', "30 days and a blank");
        for (const char16_t c : satz.tage)
            fordere(c == u' ' || filter.zulässig(c), "a code that is none");
    }
    for (const Kommentarsatz& k : inhalt.Kommentardaten)
        fordere(k.von >= 1 && k.von <= k.bis && k.bis <= TAGE, "days of a comment");
}

Monatsinhalt gelesen(Prüfplatz& p, const std::string& bytes) {
    const Text pfad = p.platz.Datenpfad + u"gelesen";
    p.fs.schreibe(pfad, bytes);
    Monatsinhalt inhalt;
    inhalt.yymm = u"2611";
    p.kanal.Datei_öffnen(pfad, Dateimodus::Input);
    Monat_einlesen(p.kanal, pfad, Codefilter(p.konfig.werte().U()), inhalt);
    p.kanal.Datei_schließen();
    return inhalt;
}

void verdichten(Prüfplatz& p, const Monatsinhalt& inhalt) {
    std::vector<Text> namen;
    for (const Erfassungssatz& satz : inhalt.Erfassungsdaten)
        if (&satz == &inhalt.Erfassungsdaten(inhalt.letzter_Satz(satz.BenId))) namen.push_back(satz.BenId);
    std::vector<Text> zeilen{u"[2611]", inhalt.Reservezeile, inhalt.Ausnahmedaten};
    const auto verdichtet = Zeilen_verdichten(inhalt, namen);
    zeilen.insert(zeilen.end(), verdichtet.begin(), verdichtet.end());
    const Monatsinhalt neu = gelesen(p, als_Datei(zeilen));
    fordere(!neu.fehlerhaft(), "a compacted month has faults");
    for (const Text& wer : namen) {
        if (wer.empty()) continue;
        const int alt_nr = inhalt.letzter_Satz(wer), neu_nr = neu.letzter_Satz(wer);
        const Text alt = alt_nr > 0 ? inhalt.Erfassungsdaten(alt_nr).tage : Text();
        fordere(neu_nr > 0 ? neu.Erfassungsdaten(neu_nr).tage == alt : trimmen(alt).empty(), "a row lost");
        const auto vorher = inhalt.Kommentare(wer), nachher = neu.Kommentare(wer);
        for (std::size_t t = 1; t <= TAGE; ++t)
            fordere(alt[t - 1] == u' ' || vorher[t] == nachher[t], "a comment lost");
    }
}

} // namespace

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    p.konfig.ändern() = Konfiguration_Standard((eingabe.wahl & 2) != 0 ? u"jemand" : p.platz.Benutzername);
    p.konfig.ableiten();
    for (const TextView wer : {u"adam", u"Eva", u"", u"ÄÖ"})
        p.personal.ändern().anfügen({u"Name", Text(wer), u"000000", u"999999", {}, {}});
    p.personal.ableiten();
    p.fs.schreibe(p.platz.Datenpfad + u"2611 261116 Data.dat", eingabe.datei);

    Erfassungsdateien erfassung(p.kanal, p.platz, p.konfig, p.personal, p.log);
    bool da = false;
    const auto monat_lesen = [&] { da = erfassung.Erfassungsdaten_lesen(u"2611"); };
    const bool genommen = lesen(p, monat_lesen, p.platz.Logpfad);
    fordere(genommen == erfassung.lesbar(), "a month that was not read takes no entries");
    const bool alle = lesen(p, [&] { erfassung.Alle_Erfassungsdaten_einlesen(false); });
    if (!genommen || !alle) return;
    const Monatsinhalt& inhalt = erfassung.monat();
    fordere(da == !inhalt.Erfassungsdaten.leer(), "the result tells of rows");
    Inhalt_prüfen(inhalt, Codefilter(p.konfig.werte().U()));
    for (int i = 1; i <= p.personal.MA().oben(); ++i) {
        const Text& wer = p.personal.MA()(i).MA_BenId;
        const int nr = wer.empty() ? 0 : inhalt.letzter_Satz(wer);
        const Text erwartet = nr > 0 ? inhalt.Erfassungsdaten(nr).tage : Text(TAGE, u' ');
        fordere(wer.empty() || aus_cp1252(erfassung.Daten().tage(NOVEMBER_2026, i)) == erwartet,
                "both ways of reading agree");
    }
    verdichten(p, inhalt);
}

} // namespace kalvora::fuzz
