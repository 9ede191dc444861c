#include "frame/programm.h"

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr double STARTBILD_MINDESTENS = 1.25; // seconds

} // namespace

Programm::Programm(const Plattform& plattform, WindowSystem& fenster, const std::vector<Text>& argumente)
    : plattform_(plattform), app_(fenster), aufruf_(argumente) {}

void Programm::aufbauen() {
    Environment& u = plattform_.umgebung;
    werk_ = std::make_unique<Dateiwerk>(plattform_.fs, plattform_.uhr,
                                        u.host_name() + u"-" + ziffern(u.process_id()));
    kanal_ = std::make_unique<Dateikanal>(*werk_, app_, u.random_seed());
    daten_ = std::make_unique<Gemeinsame_Daten>(app_, *kanal_, platz_);
    kanal_->bei_langsamem_Schließen = [this] {
        platz_.Langsame_Anzeige = true;
        daten_->ini.wahl().Fensterdaten_(fenster::LANGSAM) = 1;
    };
}

Programm::~Programm() {
    if (start_) app_.close(*start_);
    if (haupt_) app_.close(haupt_->form());
}

int Programm::ausführen() {
    if (starten()) schleife();
    return ende();
}

bool Programm::starten() {
    try {
        aufbauen();
        Main();
        läuft_ = true;
    } catch (const Ende& ende) {
        status_ = ende.status;
    } catch (...) {
        scheitern(std::current_exception());
    }
    return läuft_;
}

void Programm::schleife() {
    try {
        app_.run(haupt_->form());
    } catch (...) {
        scheitern(std::current_exception());
    }
}

int Programm::ende() {
    if (haupt_) app_.close(haupt_->form());
    haupt_.reset();
    return status_;
}

void Programm::scheitern(const std::exception_ptr& fehler) {
    status_ = 2;
    platz_.Ordner_neu = false;
    if (start_) app_.close(*start_);
    start_.reset();
    const bool lief = std::exchange(läuft_, false);
    try {
        Meldung(app_, platz_, daten_.get()).berichten(fehler, aufruf_.enthalten(u"silent"));
        if (lief) Unbestätigtes_nennen();
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): nothing is left that could tell it
    }
    if (lief) plattform_.fs.change_folder(platz_.Temppfad);
}

// A stop in the middle of the work: entries that nobody has seen on the disk yet are looked for once more.
void Programm::Unbestätigtes_nennen() {
    daten_->erfassung.Sammeln(false);
    daten_->erfassung.Ausstehende_abschließen();
}

// The order is required: each step relies on the ones before it.
void Programm::Main() {
    platz_.Startphase = true;
    startordner_ = plattform_.fs.current_folder();
    Systempfad_bestimmen();
    Instanz_prüfen();
    Datum_und_Aufruf();
    Startbild();
    Gebietsschema_und_Datum_prüfen();
    Datenordner_bestimmen();
    Silent_beenden();
    Datenordner_prüfen();
    Ordner_einrichten();
    Erster_Lauf();
    Gemeinsame_Dateien_lesen();
    Persönliches_lesen();
    Temp_Logs_aufräumen();
    daten_->erfassung.Erfassungsdateien_checken();
    Fenster_zeigen();
}

void Programm::Fenster_zeigen() {
    haupt_ = std::make_unique<Hauptfenster>(*daten_);
    haupt_->Startphase_beendet = [this] {
        platz_.Startphase = false;
        kanal_->Letzte_Datei_merken({});
    };
    haupt_->schließen = [this] { return Schließen(); };
    haupt_->öffnen(platz_.Startmeldung.empty());
    if (start_) {
        const double rest = platz_.Startzeit + STARTBILD_MINDESTENS - plattform_.uhr.steady();
        if (rest > 0) app_.Pause(rest);
        app_.close(*start_);
        start_.reset();
    }
    const Fensterdaten& w = daten_->ini.wahl().Fensterdaten_;
    if (w(fenster::BREITE) > 0 && w(fenster::HÖHE) > 0)
        haupt_->form().start_geometry =
            Geometry{w(fenster::LINKS), w(fenster::OBEN), w(fenster::BREITE), w(fenster::HÖHE)};
    if (w(fenster::ZUSTAND) == static_cast<int>(WindowState::Maximised))
        haupt_->form().start_state = WindowState::Maximised;
    app_.open(haupt_->form());
    if (platz_.Startmeldung.empty()) return;
    // Who may not use the program sees the empty window, then the reason.
    if (haupt_->form().view()) haupt_->form().view()->paint_now();
    app_.Pause(1);
    throw Programmabbruch(u"modKalvora - Main", platz_.Startmeldung, u"NoLog");
}

// Closing the main window. What was saved but not yet seen is looked for first.
bool Programm::Schließen() {
    if (!läuft_) return true;
    haupt_->Fenster_merken();
    daten_->ini.Inidatei_schreiben();
    daten_->erfassung.Ausstehende_abschließen();
    for (Form* form : std::vector<Form*>(app_.forms()))
        if (form != &haupt_->form()) app_.close(*form);
    läuft_ = false;
    // No handle stays on the shared folder; a temp folder that has gone meanwhile is no reason to complain
    // now.
    plattform_.fs.change_folder(platz_.Temppfad);
    return true;
}

} // namespace kalvora
