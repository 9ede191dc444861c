#include "messung/firmenlager.h"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "messung/prozess.h"

namespace kalvora::bench {

Messordner::Messordner()
    : pfad_(std::string(KALVORA_BIN_DIR) + "/../messung-" + std::to_string(::getpid()) + "/") {
    std::filesystem::create_directories(pfad_);
}

Messordner::~Messordner() {
    std::error_code egal;
    std::filesystem::remove_all(pfad_, egal);
}

// By a program of its own, so that this one's memory is as fresh as that of a workstation.
Text Firmenlager::Datenpfad(int Mitarbeiter) {
    Text& pfad = vorhanden_[Mitarbeiter];
    if (!pfad.empty()) return pfad;
    const std::string ziel = ordner_.pfad() + std::to_string(Mitarbeiter);
    const Lauf lauf = bis_zum_Ende(
        {{KALVORA_BIN_DIR "/kalvora-firma", "--ziel", ziel, "--mitarbeiter", std::to_string(Mitarbeiter),
          "--seed", "7", "--heute", "161126", "--benutzer", "messung", "--version-heute", "--voll"},
         {},
         {}});
    if (lauf.Status != 0) throw std::runtime_error("no company was made");
    return pfad = aus_utf8(ziel) + u"/Data/";
}

Arbeitsstation::Arbeitsstation(const Text& Datenpfad)
    : app(fenster), werk(fs, uhr, u"messung-" + ziffern(::getpid())), kanal(werk, app, 1),
      daten(app, kanal, platz) {
    platz.Heute = FormatDatumSD(HEUTE_S);
    platz.Heute_S = HEUTE_S;
    platz.Benutzername = u"messung";
    platz.Datenpfad = Datenpfad;
    platz.Logpfad = Datenpfad + u"Logs/";
    platz.Backuppfad = Datenpfad + u"Backups/";
    daten.konfig.Konfigdaten_lesen();
    daten.personal.Mitarbeiterdaten_lesen();
    daten.feiertage.Feiertage_lesen();
    daten.ferien.Ferientage_lesen();
    daten.erfassung.Erfassungsdaten_lesen(platz.Monat_heute());
    platz.Startphase = false; // as when a user works
}

Arbeitsstation& Arbeitsstationen::mit(int Mitarbeiter) {
    auto& station = alle_[Mitarbeiter];
    if (!station) station = std::make_unique<Arbeitsstation>(lager_.Datenpfad(Mitarbeiter));
    return *station;
}

} // namespace kalvora::bench
