#include "firma/protokolle.h"

#include <algorithm>
#include <tuple>

namespace kalvora::firma {

namespace {

constexpr int MONATE_IM_LOG = 3; // the present one included, as many as the standard settings keep

struct Logsatz {
    Datum tag = 0;
    int sekunde = 0;
    int art = 1;
    Text Benutzername, text;
};

Text ddmmyy(Datum d) {
    return Datumsformat{Datumsreihenfolge::TagMonatJahr, u'.'}.FormatDatumDA(d);
}

Text Eintragstext(const Person& p, const Vorgang& v, const Konfiguration& k) {
    return p.BenId + u"|" + k.SF(v.Grund).SF_Text + u"|" + Ersetzen(ddmmyy(v.von), u".", u"") + u"|" +
           Ersetzen(ddmmyy(v.bis), u".", u"");
}

int Bürozeit(Zufall& zufall) { // seconds of the day
    return zufall.zwischen(7 * 3600, 17 * 3600);
}

// Entries are made by the person or by the administrator; a few were first made a day too late and undone.
void Einträge_sammeln(const Person& p, const Abwesenheiten& a, const Konfiguration& k,
                      const Firmenwunsch& wunsch, Datum ab, std::vector<Logsatz>& sätze) {
    Zufall zufall = p.zufall;
    for (const Vorgang& v : a.Vorgänge) {
        if (v.gebucht < ab || v.gebucht > wunsch.Heute) continue;
        const Text wer = zufall.prozent(60) || wunsch.Benutzername.empty() ? p.BenId : wunsch.Benutzername;
        const int sekunde = Bürozeit(zufall);
        if (zufall.prozent(4)) {
            Vorgang irrtum = v;
            ++irrtum.von;
            ++irrtum.bis;
            const Text text = Eintragstext(p, irrtum, k);
            sätze.push_back({v.gebucht, sekunde - 40, 1, wer, text});
            sätze.push_back({v.gebucht, sekunde - 20, 1, wer, text + u":Storno"});
        }
        sätze.push_back({v.gebucht, sekunde, 1, wer, Eintragstext(p, v, k)});
    }
}

void Verwaltung_sammeln(const Firmenwunsch& wunsch, Datum ab, std::vector<Logsatz>& sätze) {
    Zufall zufall(wunsch.Saat, 3'000'000'000);
    const Text wer = wunsch.Benutzername.empty() ? Text(u"verwaltung") : wunsch.Benutzername;
    for (Datum d = ab; d <= wunsch.Heute; ++d) {
        if (Wochentag(d) > 5 || !zufall.prozent(12)) continue;
        const Text monat = Text(rechts(ddmmyy(d), 5)).substr(0, 3) + u"20" + Text(rechts(ddmmyy(d), 2));
        sätze.push_back(
            {d, Bürozeit(zufall), 2, wer, u"Erfassungsdatei für " + monat + u" wurde defragmentiert"});
    }
}

Zeitpunkt Zeitpunkt_von(const Logsatz& s) {
    return {Kalendertag_aus(s.tag), s.sekunde / 3600, s.sekunde / 60 % 60, s.sekunde % 60};
}

} // namespace

int Logbücher_schreiben(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig, Schreibuhr& uhr,
                        const Belegschaft& leute, const std::vector<Abwesenheiten>& alle,
                        const Firmenwunsch& wunsch) {
    const Kalendertag heute = Kalendertag_aus(wunsch.Heute);
    const Datum ab = Datum_aus(heute.jahr, heute.monat - MONATE_IM_LOG + 1, 1);
    std::vector<Logsatz> sätze;
    for (std::size_t i = 0; i < alle.size(); ++i)
        Einträge_sammeln(leute.Personen[i], alle[i], konfig.werte(), wunsch, ab, sätze);
    Verwaltung_sammeln(wunsch, ab, sätze);
    std::stable_sort(sätze.begin(), sätze.end(), [](const Logsatz& a, const Logsatz& b) {
        return std::tie(a.tag, a.sekunde) < std::tie(b.tag, b.sekunde);
    });

    const Arbeitsplatz vorher = platz;
    Logbuch log(kanal, platz, konfig);
    log.Sammeln(true);
    for (const Logsatz& s : sätze) {
        const Text tag = FormatDatumDS(s.tag);
        if (links(tag, 4) != TextView(platz.Monat_heute())) log.Logbuch_ergänzen(1, {}); // a month is done
        platz.Heute = s.tag;
        platz.Heute_S = tag;
        platz.Benutzername = s.Benutzername;
        uhr.stellen(Zeitpunkt_von(s));
        log.Logbuch_ergänzen(s.art, s.text);
    }
    log.Logbuch_ergänzen(1, {});
    platz = vorher;
    return static_cast<int>(sätze.size());
}

} // namespace kalvora::firma
