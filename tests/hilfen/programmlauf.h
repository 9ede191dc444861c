// A whole program without a screen: windows that only note what they are told, a made-up small company, and
// the main window's controls worked as by hand.
#pragma once

#include <gtest/gtest.h>

#include "frame/programm.h"
#include "hilfen/arbeitsplatz.h"
#include "hilfen/test_umgebung.h"

namespace kalvora {

class FragendeFenster : public StummeFenster {
public:
    std::vector<Text> fragen, geöffnet;
    Antwort antwort = Antwort::Nein;
    std::function<void()> bei_Frage; // something happens while the question stands
    std::optional<Text> eingabe;
    std::function<void(Form&)> im_Dialog; // what the user does in a modal window
    void run_modal(Form& form) override {
        if (im_Dialog) im_Dialog(form);
    }
    std::optional<Text> input(const Text&, const Text&, const Text&) override { return eingabe; }
    void open(Form& form) override { geöffnet.push_back(form.name()); }
    Antwort question(const Text& text, const Frageart&) override {
        fragen.push_back(text);
        if (bei_Frage) bei_Frage();
        return antwort;
    }
};

// The files that the installation delivers; country 049 has New Year's Day and the Day of German Unity.
inline void Installation_ablegen(FileSystem& fs, const Text& wurzel = u"/") {
    std::vector<Text> vorlage{u"[KalvoraFeiertageDat]", u"[049:Deutschland]", u"1:01.01.:Neujahr",
                              u"1:03.10.:Tag der Deutschen Einheit"};
    vorlage.resize(18, u"0:000000:");
    TestUhr uhr;
    const Dateiwerk werk(fs, uhr, u"ANLAGE-2");
    const Text ordner = wurzel + u"opt/kalvora/";
    Ordnerkette_anlegen(fs, ordner);
    EXPECT_TRUE(werk.ersetzen(ordner + u"KalvoraFtg.dat", als_Datei(vorlage)));
    EXPECT_TRUE(
        werk.ersetzen(ordner + u"KalvoraSetup.dat", als_Datei({u"[Firma]", u"Probe GmbH", u"Werk 2"})));
}

// A disk with the delivered files and nothing else.
struct Rechner : SpeicherDateisystem {
    Rechner() { Installation_ablegen(*this); }
    std::vector<Text> namen(TextView maske) const {
        std::vector<Text> aus;
        for (const auto& [pfad, bytes] : geteilte_platte()->abbild())
            if (passt_auf_Maske(pfad, maske)) aus.push_back(pfad);
        return aus;
    }
    std::vector<Text> zeilen(const Text& pfad) const { return als_Zeilen(inhalt(pfad).value_or("")); }
};

// The company: headings "Büro" (anna, otto) and "Werk" (eve, chef); chef is the administrator, priv a
// privileged user. 17 November 2026 (a Tuesday) is a holiday.
struct Firma {
    Konfiguration konfig = Konfiguration_Standard(u"chef");
    std::vector<Text> personal{u"Büro", Person(u"anna"), Person(u"otto"),
                               u"Werk", Person(u"eve"),  Person(u"chef")};
    std::vector<Text> feiertage{u"1:17.11.:Probetag"};
    int Startjahr = 2025;
    std::map<Text, std::vector<Text>> monate; // version's stem -> rows
    std::map<Text, Text> ausnahmen;           // yymm -> exception line

    Firma() {
        konfig.Privilegierte = {u"P:Priv Person:priv"};
        Setting(16, 0); // a new company's users are all administrators
    }
    static Text Person(TextView wer, TextView von = u"000000", TextView bis = u"999999") {
        return Text(von) + u":" + Text(bis) + u":000,0:000:000:000:000:" + Text(wer) + u" Name:" + Text(wer);
    }
    void Setting(int n, int wert) { konfig.settings.SetSetting(n, wert); }

    // Writes every file of the data folder; months without rows of their own are empty and of 16 November.
    void anlegen(FileSystem& fs, const Text& datenpfad) const {
        Prüfplatz p;
        Dateiwerk werk(fs, p.uhr, u"ANLAGE-1");
        Dateikanal kanal(werk, p.app, 7);
        p.platz.Datenpfad = datenpfad;
        Ordnerkette_anlegen(fs, datenpfad);
        Konfigdaten k(kanal, p.platz);
        k.ändern() = konfig;
        k.Konfigdaten_schreiben();
        const auto schreibe = [&](const Text& name, const std::vector<Text>& zeilen) {
            if (const Fehlercode f = werk.ersetzen(datenpfad + name, als_Datei(zeilen)).nummer())
                throw Laufzeitfehler(f, name);
        };
        std::vector<Text> ma{u"[Mitarbeiterdaten]", u"", ziffern(Startjahr)};
        ma.insert(ma.end(), personal.begin(), personal.end());
        schreibe(u"Mitarbeiterdaten.dat", ma);
        std::vector<Text> regeln{u"[Feiertage]", u"", u"Deutschland"};
        regeln.insert(regeln.end(), feiertage.begin(), feiertage.end());
        regeln.resize(19, u"0:000000:");
        schreibe(u"Feiertage.dat", regeln);
        for (int m = 0; m < 36; ++m) {
            const Text yymm = ziffern(Startjahr % 100 + m / 12, 2) + ziffern(m % 12 + 1, 2);
            const auto ausnahme = ausnahmen.find(yymm);
            schreibe(yymm + u" 261110 Data.dat",
                     Monat(monate.contains(yymm) ? monate.at(yymm) : std::vector<Text>{}, yymm,
                           ausnahme == ausnahmen.end() ? u"NoEx:NoEx" : ausnahme->second));
        }
    }
};

// One workstation. Days of November 2026: the 1st is a Sunday, today is Monday the 16th.
struct Platzlauf {
    FileSystem& fs;
    TestUmgebung umgebung;
    TestUhr uhr;
    FragendeFenster fenster;
    std::unique_ptr<Programm> programm;

    Platzlauf(FileSystem& dateisystem, const Text& benutzer, const Text& wurzel = u"/",
              const Text& rechner = u"PLATZ1",
              std::shared_ptr<TestUmgebung::Sperren> sperren = std::make_shared<TestUmgebung::Sperren>())
        : fs(dateisystem), umgebung(std::move(sperren)) {
        umgebung.rechner = rechner;
        umgebung.variablen[u"USERNAME"] = benutzer;
        umgebung.variablen[u"KALVORA_SYSTEMPFAD"] = wurzel + u"sys-" + rechner;
        umgebung.variablen[u"TEMP"] = wurzel + u"tmp-" + rechner;
        umgebung.programmordner = wurzel + u"opt/kalvora/";
        umgebung.zufall = static_cast<std::uint32_t>(rechner.back());
        Ordnerkette_anlegen(fs, wurzel + u"tmp-" + rechner);
    }
    bool starten(const std::vector<Text>& argumente) {
        programm = std::make_unique<Programm>(Plattform{fs, uhr, umgebung}, fenster, argumente);
        return programm->starten();
    }
    void schließen() {
        fenster_().user_close();
        programm.reset();
    }

    frmKalvora& fenster_() { return programm->hauptfenster().form(); }
    Table& plan() { return fenster_().msgFlexGrid; }
    Erfassungsdateien& erfassung() { return programm->daten().erfassung; }
    int zeile(TextView BenId) { return programm->hauptfenster().ansicht().Zeile_zu_BenId(BenId); }
    void markiere(int row, int von, int bis, int row_sel = 0) {
        plan().user_select({row, von, row_sel == 0 ? row : row_sel, bis}, row);
    }
    void markiere(TextView BenId, int von, int bis) { markiere(zeile(BenId), von, bis); }
    bool drücke(int b) { return fenster_().cmdAuswahl(b)->user_click(); }
    bool trage_ein(TextView BenId, int von, int bis, int b) {
        markiere(BenId, von, bis);
        return drücke(b);
    }
    void neu_laden() { fenster_().user_key({u"F5", {}}); }
    // Texts of the days of a row, "." for an empty cell and "_" for a person's free day.
    Text zellen(TextView BenId) {
        Text aus;
        const int row = zeile(BenId);
        for (int tag = 1; tag <= 31; ++tag) {
            const Text& text = plan().cell(row, tag).text;
            aus += text.empty() ? u'.' : text.front() == FESTES_LEERZEICHEN ? u'_' : text.front();
        }
        return aus;
    }
};

inline Text letzter_Hinweis(const Platzlauf& lauf) {
    return lauf.fenster.hinweise.empty() ? Text() : lauf.fenster.hinweise.back();
}

// The company on a machine of its own, and its administrator at work there.
struct Haus : Rechner {
    Haus() { Firma().anlegen(*this, u"/srv/x/Data/"); }
    Platzlauf chef{*this, u"chef"};
};

} // namespace kalvora
