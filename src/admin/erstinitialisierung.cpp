#include "admin/erstinitialisierung.h"

#include <algorithm>
#include <array>
#include <utility>

#include "files/mitarbeiterdaten.h"
#include "files/ordner.h"
#include "files/stammdatei.h"
#include "files/versionsname.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr int JAHRE = 3;
constexpr int FELDER_ZEILE_9 = 3;
constexpr TextView SETUPDATEI = u"KalvoraSetup.dat";

// Country numbers by the settings position that holds the country.
constexpr std::array<int, 4> LAND_ZU_SETTING{49, 1, 33, 34};

} // namespace

// Read as a first run reads it. A fault of the network says nothing about the file.
bool Setup::Vorlage_brauchbar(const Text& ordner, const Text& name) const {
    if (!Datei_vorhanden(kanal_.fs(), Datei_finden(kanal_.fs(), ordner, name))) return false;
    Arbeitsplatz nur_dort = platz_;
    nur_dort.Systempfad = nur_dort.Programmpfad = ordner;
    try {
        if (gleich_ohne_Fall(name, SETUPDATEI))
            Setup(kanal_, nur_dort, konfig_, log_).KalvoraSetupDat_lesen();
        else
            Feiertagsdatei(kanal_, nur_dort).KalvoraFeiertageDat_lesen(Ländercode_ermitteln());
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ) throw;
        return false;
    } catch (const Fehler&) {
        kanal_.verwerfen();
        kanal_.Letzte_Datei_merken({});
        return false;
    }
    return true;
}

bool Setup::Vorlage_vorhanden(const Text& name) const {
    return Vorlage_brauchbar(platz_.Systempfad, name) || Vorlage_brauchbar(platz_.Programmpfad, name);
}

bool Setup::Vorlage_bereitlegen(const Text& name) const {
    if (Vorlage_brauchbar(platz_.Systempfad, name)) return true;
    if (!Vorlage_brauchbar(platz_.Programmpfad, name)) return false;
    const auto inhalt = kanal_.werk().lesen(Datei_finden(kanal_.fs(), platz_.Programmpfad, name));
    const Text ziel = Datei_finden(kanal_.fs(), platz_.Systempfad, name);
    return inhalt && kanal_.werk().ersetzen(ziel, inhalt->sicht());
}

void Setup::Verlorenes_erkennen() const {
    if (!Datei_passend_vorhanden(kanal_.fs(), platz_.Datenpfad, u"*Data.dat")) return;
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"})
        if (fehlt(name)) Dateifehler(1, platz_.Datenpfad + Text(name));
}

void Setup::Standard_ergänzen(const Text& name) {
    als_Prozedur(u"modSetup - Erstinitialisierung", [&] {
        if (!fehlt(name)) return;
        reserve_ = konfig_.werte().Reservezeile;
        if (gleich_ohne_Fall(name, u"Konfigdaten.dat")) {
            KalvoraSetupDat_lesen();
            Inst_Konfigdaten_schreiben();
        }
        if (gleich_ohne_Fall(name, u"Mitarbeiterdaten.dat")) {
            platz_.Startjahr = Startjahr_der_Monate();
            Inst_Mitarbeiterdaten_schreiben();
        }
        if (gleich_ohne_Fall(name, u"Feiertage.dat")) Inst_Feiertage_schreiben();
        SetupDat_löschen();
    });
}

void Setup::Erstinitialisierung() {
    als_Prozedur(u"modSetup - Erstinitialisierung", [&] {
        Verlorenes_erkennen();
        KalvoraSetupDat_lesen();
        Startjahr_festlegen();
        Land_ = Ländercode_ermitteln();
        if (fehlt(u"Konfigdaten.dat"))
            Inst_Konfigdaten_schreiben();
        else
            Inst_Konfigdaten_modifizieren();
        if (fehlt(u"Mitarbeiterdaten.dat")) Inst_Mitarbeiterdaten_schreiben();
        if (fehlt(u"Feiertage.dat")) Inst_Feiertage_schreiben();
        Inst_Erfassungsdateien_anlegen();
        SetupDat_löschen();
        log_.Logbuch_ergänzen(2, u"Programm initialisiert (Ländercode " + Land_ + u")");
    });
}

// A folder of the name or a fault of the network is not "missing".
bool Setup::fehlt(TextView name) const {
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Datenpfad, Text(name));
    const auto info = kanal_.fs().info(pfad);
    if (info || info.nummer() == FEHLER_NICHT_GEFUNDEN) return !info;
    throw Zugriffsfehler(info.nummer(), pfad);
}

void Setup::KalvoraSetupDat_lesen() {
    Stammdatei datei(kanal_, platz_.Systempfad, Text(SETUPDATEI), u"modSetup - KalvoraSetupDat");
    datei.Kopf(u"Firma");
    firma_ = datei.Zeile();
    firmenzusatz_ = datei.Zeile();
    zeile_9_.clear();
    for (int n = 0; n < FELDER_ZEILE_9; ++n)
        zeile_9_ += (n > 0 ? u":" : u"") + (datei.Ende() ? Text() : datei.Zeile());
}

// In the steady state, and without any month, the present year is the middle one of three.
int Setup::Startjahr_der_Monate() const {
    const auto jahre = passende_Startjahre(kanal_.fs(), platz_.Datenpfad);
    const int üblich = Jahr(platz_.Heute) - 1;
    return jahre.empty() || std::binary_search(jahre.begin(), jahre.end(), üblich) ? üblich : jahre.back();
}

// The staff file says so; a folder without it goes by its months.
void Setup::Startjahr_festlegen() {
    platz_.Startjahr = fehlt(u"Mitarbeiterdaten.dat") ? Startjahr_der_Monate()
                                                      : Mitarbeiterdatei_lesen(kanal_, platz_).Startjahr;
}

Text Setup::Ländercode_ermitteln() const {
    int nummer = platz_.gebiet.Ländernummer;
    const Text& kürzel = platz_.gebiet.Landeskürzel;
    if (nummer == 1) nummer = kürzel == u"USA" ? 1 : kürzel == u"CAD" ? 2 : 0;
    if (nummer <= 0 || nummer > 999) {
        const auto land = static_cast<size_t>(konfig_.werte().Setting(15));
        nummer = LAND_ZU_SETTING[land < LAND_ZU_SETTING.size() ? land : 0];
    }
    return ziffern(nummer, 3);
}

void Setup::Inst_Konfigdaten_schreiben() {
    Konfigdaten neu(kanal_, platz_); // what is held in memory stays as it is until the file is read
    Konfiguration& k = neu.ändern();
    k = Konfiguration_Standard(platz_.Benutzername);
    k.Firma = firma_;
    k.Firmenzusatz = firmenzusatz_;
    k.Zeile_9 = zeile_9_;
    neu.Konfigdaten_schreiben(Dateimodus::Neu);
    reserve_.clear();
}

void Setup::Inst_Konfigdaten_modifizieren() {
    const auto [zeilen, gelesen] = zweite_Lesung(kanal_.app(), [&] {
        Stammdatei datei(kanal_, platz_.Datenpfad, u"Konfigdaten.dat");
        datei.Kopf(u"Kalvora");
        std::vector<Text> alle{u"[Kalvora]", datei.Zeile(), datei.Zeile()};
        while (!datei.Ende())
            alle.push_back(datei.Zeile());
        return std::pair(std::move(alle), datei.Vorgefunden());
    });
    reserve_ = zeilen[1];
    if (zeilen[2] == PROGRAMMVERSION) return;
    kanal_.Datei_öffnen(platz_.Datenpfad + u"Konfigdaten.dat", Dateimodus::Output);
    kanal_.Nur_ersetzen(gelesen); // what an administrator has saved meanwhile counts more
    for (size_t n = 0; n < zeilen.size(); ++n)
        kanal_.LineOut(n == 2 ? PROGRAMMVERSION : TextView(zeilen[n]));
    kanal_.Datei_schließen();
}

void Setup::neue_Datei(const Text& name, const std::vector<Text>& zeilen) {
    kanal_.Datei_öffnen(platz_.Datenpfad + name, Dateimodus::Neu);
    for (const Text& zeile : zeilen)
        kanal_.LineOut(zeile);
    kanal_.Datei_schließen(); // somebody else was faster: his file stands
}

void Setup::Inst_Mitarbeiterdaten_schreiben() {
    neue_Datei(u"Mitarbeiterdaten.dat",
               {u"[Mitarbeiterdaten]", reserve_, ziffern(platz_.Startjahr), u"NoNames"});
}

void Setup::Inst_Feiertage_schreiben() {
    Feiertagsdatei neu(kanal_, platz_);
    neu.KalvoraFeiertageDat_lesen(Land_.empty() ? Ländercode_ermitteln() : Land_);
    neu.Reservezeile_setzen(reserve_);
    neu.Feiertage_schreiben(Dateimodus::Neu);
}

void Setup::Inst_Erfassungsdateien_anlegen() {
    const auto da = Dateien(kanal_.fs(), platz_.Datenpfad, u"*Data.dat");
    for (int jahr = platz_.Startjahr; jahr < platz_.Startjahr + JAHRE; ++jahr)
        for (int monat = 1; monat <= 12; ++monat) {
            const Text yymm = ziffern(jahr % 100, 2) + ziffern(monat, 2);
            const auto desMonats = [&](const Text& name) {
                return name.starts_with(yymm) && ist_Versionsname(name);
            };
            if (std::any_of(da.begin(), da.end(), desMonats)) continue;
            neue_Datei(yymm + u" " + platz_.Heute_S + u" Data.dat",
                       {u"[" + yymm + u"]", reserve_, u"NoEx:NoEx"});
        }
}

// The delivered file itself stays.
void Setup::SetupDat_löschen() {
    if (platz_.Systempfad == platz_.Programmpfad) return;
    Datei_löschen(kanal_.fs(), Datei_finden(kanal_.fs(), platz_.Systempfad, Text(SETUPDATEI)));
}

} // namespace kalvora
