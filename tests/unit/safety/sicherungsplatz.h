// A workstation with backups: the in-memory disk, the modules of safety, and a user who answers.
#pragma once

#include <gtest/gtest.h>

#include "hilfen/programmlauf.h"
#include "safety/datenuebernahme.h"
#include "safety/frm_recovery.h"

namespace kalvora {

using Mitglieder = std::vector<std::pair<Text, std::string>>;

struct Sicherungsplatz : Prüfplatz {
    FragendeFenster dialog;
    Application dialog_app{dialog};
    Dateikanal dateien{werk, dialog_app, 1};
    Backups backups{dateien, platz, konfig, log};
    Wiederherstellung wieder{dateien, platz};
    Ordnerersatz ersatz{dateien, platz, wieder, backups, log};
    Datenübernahme übernahme{dialog_app, dateien, platz, konfig, log, backups, wieder, ersatz};

    explicit Sicherungsplatz(std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>())
        : Prüfplatz(std::move(platte)) {
        platz.Backuppfad = u"/srv/x/Data/Backups/";
        platz.Temppfad.clear();
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
    bool ersetzen(const Text& backup) {
        const auto container = wieder.lesen(backup);
        return container && ersatz.Datenordner_ersetzen(*container);
    }
    // Names in a folder.
    std::vector<Text> namen(const Text& ordner) const {
        std::vector<Text> alle;
        for (const auto& [pfad, bytes] : fs.geteilte_platte()->abbild())
            if (ParentDir(pfad) == ordner) alle.push_back(Dateiname_aus_Pfad(pfad));
        return alle;
    }
    // Files of the data folder and the logs, without backups, siblings and what else begins with a point.
    std::map<Text, std::string> Zustand() const {
        auto alle = fs.geteilte_platte()->abbild();
        std::erase_if(alle, [&](const auto& datei) {
            return !datei.first.starts_with(platz.Datenpfad) || datei.first.starts_with(platz.Backuppfad) ||
                   Dateiname_aus_Pfad(datei.first).starts_with(u'.');
        });
        return alle;
    }
    std::vector<Text> Meldungen() { return std::exchange(dialog.hinweise, {}); }
};

} // namespace kalvora
