// A workstation with backups: the in-memory disk, the modules of safety, and a user who answers.
#pragma once

#include <gtest/gtest.h>

#include "hilfen/programmlauf.h"
#include "safety/datenuebernahme.h"
#include "safety/frm_recovery.h"

namespace kalvora {

// The text of the Programmabbruch that this ends with; empty: it came to its end.
template <class F>
Text abgebrochen(F&& tat) {
    try {
        tat();
        return {};
    } catch (const Programmabbruch& abbruch) {
        return abbruch.text();
    }
}

using Mitglieder = std::vector<std::pair<Text, std::string>>;

struct Sicherungsplatz : Prüfplatz {
    FragendeFenster dialog;
    Application dialog_app{dialog};
    Dateikanal dateien{werk, dialog_app, 1};
    Backups backups{dateien, platz, konfig, log};
    Wiederherstellung wieder{dateien, platz};
    Ordnerersatz ersatz{dateien, platz, wieder, backups, log};
    Datenübernahme übernahme{dialog_app, dateien, platz, konfig, wieder, ersatz};

    explicit Sicherungsplatz(std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>(),
                             const Text& rechner = u"PLATZ1")
        : Prüfplatz(std::move(platte), rechner) {
        platz.Backuppfad = u"/srv/x/Data/Backups/";
        platz.Temppfad.clear();
        ersatz.Prüfung = [](const auto&) { return Text(); }; // small containers will do
        fs.platte().mache_ordner(platz.Backuppfad);
    }
    Text sicherung(TextView name) const { return platz.Backuppfad + Text(name); }
    static std::string Container(const Mitglieder& mitglieder) {
        Schlüsselquelle schlüssel(3);
        Containerschreiber c(schlüssel);
        for (const auto& [name, bytes] : mitglieder)
            c.anfügen(name, bytes);
        return c.entnehmen();
    }
    // Later ones are newer.
    void lege_Backup(TextView name, const Mitglieder& mitglieder) {
        fs.schreibe(sicherung(name), Container(mitglieder));
    }
    bool ersetzen(const Text& backup, bool sichern = false) {
        const auto container = wieder.lesen(backup);
        return container && ersatz.Datenordner_ersetzen(*container, {sichern, {}});
    }
    // Names in a folder.
    std::vector<Text> namen(const Text& ordner) const {
        std::vector<Text> alle;
        for (const auto& [pfad, bytes] : fs.geteilte_platte()->abbild())
            if (ParentDir(pfad) == ordner) alle.push_back(Dateiname_aus_Pfad(pfad));
        return alle;
    }
    // Files of the data folder and the logs, without backups, siblings and what else begins with a point, and
    // without this month's log, where what happens is noted.
    std::map<Text, std::string> Zustand() const {
        auto alle = fs.geteilte_platte()->abbild();
        std::erase_if(alle, [&](const auto& datei) {
            return !datei.first.starts_with(platz.Datenpfad) || datei.first.starts_with(platz.Backuppfad) ||
                   Dateiname_aus_Pfad(datei.first).starts_with(u'.');
        });
        alle.erase(platz.Logpfad + u"2611 Kalvora.log");
        return alle;
    }
    // Of a member in all backups, from the oldest name on.
    std::vector<std::string> in_Sicherungen(const Text& name) const {
        std::vector<std::string> alle;
        for (const Text& backup : namen(platz.Backuppfad)) {
            const std::string bytes = fs.inhalt(sicherung(backup)).value_or("");
            for (const auto& m : Container_lesen(bytes).value_or(std::vector<Containermitglied>{}))
                if (m.name == name) alle.emplace_back(m.bytes);
        }
        return alle;
    }
    std::vector<Text> Meldungen() { return std::exchange(dialog.hinweise, {}); }
};

} // namespace kalvora
