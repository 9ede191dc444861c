#include "files/logbuch.h"

#include <optional>
#include <unordered_map>
#include <utility>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView STORNO = u":Storno";
constexpr int HÖCHSTENS_VERSUCHE = 4;
constexpr double REIFEZEIT = 2; // seconds
constexpr int NUTZLAST_AB = 19; // behind "dd.mm.yy hh:nn:ss|"

Text Monat_davor(const Text& yymm) {
    const Kalendertag tag = Kalendertag_aus(FormatDatumSD(yymm + u"01") - 1);
    return ziffern(tag.jahr % 100, 2) + ziffern(tag.monat, 2);
}

// All lines; nothing when the file cannot be read, is empty, or somebody is just writing its last line. An
// empty raw line is no record and is passed over.
std::optional<std::vector<Text>> Logzeilen(Dateikanal& kanal, const Text& pfad) {
    const auto info = kanal.fs().info(pfad);
    if (!info || info->folder || info->size == 0) return std::nullopt;
    if (!kanal.Datei_öffnen(pfad, Dateimodus::Input, Fehlerweg::IgnoreErrors)) return std::nullopt;
    const bool offen = kanal.letzte_Zeile_offen();
    std::vector<Text> zeilen;
    while (!kanal.Dateiende()) {
        try {
            zeilen.push_back(kanal.LineIn());
        } catch (const Laufzeitfehler&) {
        }
    }
    kanal.Datei_schließen();
    if (offen) return std::nullopt;
    return zeilen;
}

// Empties each ":Storno" and the last record before it that it cancels. False: there was none.
bool Paare_entfernen(std::vector<Text>& zeilen) {
    std::unordered_map<Text, std::vector<size_t>> stellen; // of each payload, those not yet cancelled
    bool gefunden = false;
    for (size_t i = 0; i < zeilen.size(); ++i) {
        const TextView nutzlast = mitte(zeilen[i], NUTZLAST_AB);
        if (nutzlast.size() > STORNO.size() && nutzlast.ends_with(STORNO)) {
            const auto treffer = stellen.find(Text(nutzlast.substr(0, nutzlast.size() - STORNO.size())));
            if (treffer != stellen.end() && !treffer->second.empty()) {
                zeilen[treffer->second.back()].clear();
                treffer->second.pop_back();
                zeilen[i].clear();
                gefunden = true;
                continue;
            }
        }
        stellen[Text(nutzlast)].push_back(i);
    }
    return gefunden;
}

} // namespace

void Logbuch::Logbuch_ergänzen(int art, TextView text) {
    if (platz_.Logpfad.empty()) return;
    std::vector<Text> zeilen;
    if (!text.empty()) {
        zeilen.push_back(Datumsformat{}.FormatDatumDA(platz_.Heute) + u" " +
                         FormatZeit(kanal_.werk().uhr().now()) + u"|" + platz_.Benutzername + u"|" +
                         (art == 2 ? u"KalvoAdmin|" : u"") + Text(text));
        if (sammeln_) {
            puffer_.push_back(std::move(zeilen.front()));
            return;
        }
    } else if (sammeln_) {
        zeilen.swap(puffer_);
    }
    anfügen(u"Kalvora.log", zeilen);
}

void Logbuch::Logbuch_ÜStd_ergänzen(int art, TextView text) {
    if (platz_.Logpfad.empty() || text.empty()) return;
    const Text uhrzeit = Ersetzen(FormatZeit(kanal_.werk().uhr().now()), u":", u"");
    anfügen(u"ÜStunden.log", {platz_.Heute_S + u"|" + uhrzeit + u"|" + platz_.Benutzername + u"|" +
                              (art == 2 ? u"UStdAdmin|" : u"") + Text(text)});
}

void Logbuch::anfügen(TextView name, const std::vector<Text>& zeilen) {
    if (zeilen.empty()) return;
    const Text datei = platz_.Monat_heute() + u" " + Text(name);
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Logpfad, datei);
    if (!in_Datei(pfad, zeilen)) return;
    ungesehen_.push_back({pfad,
                          {kanal_.Größe_vor_Anhang(), kanal_.Stand(), kanal_.Kopfbytes()},
                          kanal_.Angehängtes(),
                          kanal_.werk().uhr().steady()});
    // Of several records at once the copy gets the last one alone.
    if (konfig_.werte().Setting(2) == 1)
        in_Datei(Datei_finden(kanal_.fs(), platz_.Temppfad, datei), {zeilen.back()});
}

bool Logbuch::in_Datei(const Text& pfad, const std::vector<Text>& zeilen) {
    if (!kanal_.Datei_öffnen(pfad, Dateimodus::Append, Fehlerweg::IgnoreErrors)) return false;
    for (const Text& zeile : zeilen)
        kanal_.LineOut(zeile);
    return kanal_.Datei_schließen() == 0;
}

// Takes out those old enough; of one file together, from the place of the first on.
std::vector<Logbuch::Ungesehenes> Logbuch::reife(bool alle) {
    const double jetzt = kanal_.werk().uhr().steady();
    std::vector<Ungesehenes> reif;
    std::erase_if(ungesehen_, [&](Ungesehenes& u) {
        if (!alle && jetzt - u.zeit < REIFEZEIT) return false;
        if (!reif.empty() && reif.back().pfad == u.pfad && reif.back().versuch == u.versuch)
            reif.back().zeilen += u.zeilen;
        else
            reif.push_back(std::move(u));
        return true;
    });
    return reif;
}

// A log that is out of reach is looked at again next time. Whoever has written one anew had the records
// before him.
void Logbuch::nachsehen(bool alle) {
    const Dateiwerk& werk = kanal_.werk();
    for (Ungesehenes& u : reife(alle)) {
        const auto fehlt = werk.Überschriebenes(u.pfad, u.wo, u.zeilen);
        const bool vorbei = fehlt ? fehlt->empty() : fehlt.nummer() == FEHLER_NICHT_GEFUNDEN;
        if (vorbei || (fehlt && ++u.versuch > HÖCHSTENS_VERSUCHE)) continue;
        if (fehlt) {
            u.zeilen = *fehlt;
            u.zeit = werk.uhr().steady();
            if (auto wo = werk.anhängen(u.pfad, u.zeilen, true)) u.wo = std::move(*wo);
        }
        ungesehen_.push_back(std::move(u));
    }
}

void Logbuch::Logbuch_bereinigen(TextView art) {
    if (platz_.Logpfad.empty()) return;
    const Text monat = art == u"M" ? Monat_davor(platz_.Monat_heute()) : platz_.Monat_heute();
    const Text name = monat + u" Kalvora.log";
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Logpfad, name);
    auto zeilen = Logzeilen(kanal_, pfad);
    const Dateiwerk::Vorgefunden gelesen{kanal_.Stand().size, kanal_.Kopfbytes()};
    if (!zeilen || !Paare_entfernen(*zeilen)) return;
    std::erase(*zeilen, Text());
    if (zeilen->empty()) return; // a file of length zero would count as somebody's rewrite
    if (!kanal_.Datei_öffnen(platz_.Logpfad + name, Dateimodus::Output, Fehlerweg::IgnoreErrors)) return;
    kanal_.Nur_ersetzen(gelesen); // whoever has appended meanwhile keeps his record: tomorrow's run does it
    for (const Text& zeile : *zeilen)
        kanal_.LineOut(zeile);
    kanal_.Datei_schließen();
}

} // namespace kalvora
