#include "frame/programm.h"

#include <algorithm>

#include "files/ordner.h"
#include "safety/datenuebernahme.h"
#include "safety/frm_recovery.h"

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
    app_.Vorgangsanzeige = [this](const Text& text) { Vorgang_zeigen(text); };
    backups_ = std::make_unique<Backups>(*kanal_, platz_, daten_->konfig, daten_->log);
    wiederherstellung_ = std::make_unique<Wiederherstellung>(*kanal_, platz_);
    ersatz_ = std::make_unique<Ordnerersatz>(*kanal_, platz_, *wiederherstellung_, *backups_, daten_->log);
    ersatz_->Fortschritt = [this](int fertig, int alle) {
        Fortschritt_zeigen(u"Datenordner wird wiederhergestellt", fertig, alle);
    };
    backups_->Fortschritt = [this](int fertig, int alle) {
        Fortschritt_zeigen(u"Sicherung wird erstellt", fertig, alle);
    };
    reparatur_ = std::make_unique<Reparatur>(*daten_, *backups_, *wiederherstellung_);
    daten_->erfassung.vervollständigen = [this](const Text& name, std::string_view bytes) {
        return wiederherstellung_->Monat_vervollständigt(name, bytes);
    };
    daten_->Backup_erstellen = [this](TextView art) { return Backup_erstellen(art); };
    kanal_->bei_langsamem_Schließen = [this] {
        platz_.Langsame_Anzeige = true;
        daten_->ini.wahl().Fensterdaten_(fenster::LANGSAM) = 1;
    };
}

// Only of what lasts: a backup of a small company is done before anybody could read of it.
void Programm::Fortschritt_zeigen(TextView was, int fertig, int alle) {
    constexpr double ERST_NACH = 0.4, TAKT = 0.1; // seconds
    const double jetzt = plattform_.uhr.steady();
    if (fertig <= 1) vorgang_ab_ = jetzt + ERST_NACH;
    if (jetzt < vorgang_ab_) return;
    vorgang_ab_ = jetzt + TAKT;
    vorgang_steht_ = true;
    app_.Vorgang(Text(was) + u" ... " + ziffern(100L * fertig / alle) + u" %");
}

// What was shown stays until the work is over, whichever way it ends.
bool Programm::mit_Fortschritt(const std::function<bool()>& arbeit) {
    struct Ende_des_Vorgangs {
        Programm& programm;
        ~Ende_des_Vorgangs() {
            if (std::exchange(programm.vorgang_steht_, false)) programm.app_.Vorgang({});
        }
    } const ende{*this};
    return arbeit();
}

Text Programm::Backup_erstellen(TextView art) {
    const bool gemacht = mit_Fortschritt(
        [&] { return art == u"F" ? backups_->Fehlersicherung() : backups_->Backup_erstellen(art); });
    return gemacht ? Text() : backups_->Hindernis();
}

// Backups that nobody can list or read just now stop no start.
std::optional<Wiederherstellung::Gekürzt> Programm::gekürzter_Monat() const {
    try {
        if (backups_->Tagessicherung_fällig()) return wiederherstellung_->gekürzter_Monat();
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ || !ist_Dateifehler(fehler.nummer)) throw;
    }
    return std::nullopt;
}

// What a month has lost since the newest backup is noticed before the day's one takes the rest for the whole.
void Programm::Tagessicherung() {
    if (const auto monat = gekürzter_Monat()) {
        Dateischaden schaden(u"In der Datei " + Pfad_kürzen(monat->pfad, 100) +
                                 u" fehlen Datensätze, die in der Sicherung vom " + monat->Sicherungszeit +
                                 u" enthalten sind.",
                             monat->pfad);
        schaden.nur_Verdacht = true;
        throw schaden;
    }
    if (mit_Fortschritt([&] { return backups_->Tagessicherung(); })) erster_Start_des_Tages_ = true;
}

void Programm::Vorgang_zeigen(const Text& text) {
    if (start_) return start_->Starttext_setzen(text);
    if (!haupt_) return;
    Label& label = haupt_->form().lblStatus4;
    label.set_text(text);
    label.set_visible(!text.empty());
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
    const bool lief = std::exchange(läuft_, false);
    try {
        Meldung(app_, platz_, daten_.get(), reparatur_.get()).berichten(fehler, aufruf_.enthalten(u"silent"));
        if (lief) {
            Unbestätigtes_nennen();
            haupt_->Fenster_merken();
            daten_->ini.Inidatei_schreiben();
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): nothing is left that could tell it
    }
    if (start_) app_.close(*start_); // it shows the progress of a repair's backup
    start_.reset();
    if (lief) (void)plattform_.fs.change_folder(platz_.Temppfad);
}

// A stop in the middle of the work: entries that nobody has seen on the disk yet are looked for once more.
void Programm::Unbestätigtes_nennen() {
    daten_->erfassung.Sammeln(false);
    daten_->erfassung.Ausstehende_abschließen();
}

// The order is required: each step relies on the ones before it. Every step can be run again.
void Programm::Main() {
    platz_.Startphase = true;
    startordner_ = plattform_.fs.current_folder();
    for (const auto schritt :
         {&Programm::Systempfad_bestimmen, &Programm::Instanz_prüfen, &Programm::Datum_und_Aufruf,
          &Programm::Startbild, &Programm::Gebietsschema_und_Datum_prüfen, &Programm::Datenordner_bestimmen,
          &Programm::Silent_beenden, &Programm::Datenordner_prüfen, &Programm::Ordner_einrichten,
          &Programm::Programmsperre_prüfen, &Programm::Erster_Lauf, &Programm::Tagessicherung,
          &Programm::Inipfad_einrichten, &Programm::Gemeinsame_Dateien_lesen, &Programm::Versionsnr_checken,
          &Programm::Persönliches_lesen, &Programm::Aufräumen, &Programm::Erfassungsdateien_checken,
          &Programm::Fenster_zeigen})
        Schritt(schritt);
    const auto& offen = app_.forms();
    if (!haupt_ || std::find(offen.begin(), offen.end(), &haupt_->form()) == offen.end())
        throw Programmabbruch(u"modKalvora - Main", {}, u"NoLog"); // forced on, and still nothing to show
}

// A network that is gone is waited for, and then the step is tried again. With /enforcestart other faults are
// told, and the next step follows; but an interrupted restore must be finished.
void Programm::Schritt(void (Programm::*schritt)()) {
    const bool still = aufruf_.enthalten(u"silent");
    const bool erzwungen = aufruf_.enthalten(u"enforcestart") && schritt != &Programm::Datenordner_prüfen;
    for (int erkannt = 0;;) {
        std::exception_ptr netz;
        Text fehlt;
        try {
            return (this->*schritt)();
        } catch (const Laufzeitfehler& fehler) {
            if (still || !platz_.Startphase) throw;
            netz = std::current_exception();
            if (fehler.nummer != FEHLER_NETZ) {
                const bool Abbruch = dynamic_cast<const Zugriffsabbruch*>(&fehler) != nullptr;
                const bool im_Verdacht =
                    kanal_ && !kanal_->Letzte_Datei().empty() && !ist_Dateifehler(fehler.nummer);
                if (!erzwungen || Abbruch || im_Verdacht) throw;
                return Meldung(app_, platz_, daten_.get(), nullptr).berichten_und_weiter(fehler);
            }
            fehlt = fehler.datei;
        } catch (const Fehler&) {
            throw;
        } catch (const std::exception& fehler) {
            if (still || !platz_.Startphase || !erzwungen) throw;
            return Meldung(app_, platz_, daten_.get(), nullptr)
                .berichten_und_weiter(als_Laufzeitfehler(fehler));
        }
        Warte_und_wiederhole(erkannt, netz, fehlt);
    }
}

void Programm::Fenster_zeigen() {
    haupt_ = std::make_unique<Hauptfenster>(*daten_);
    haupt_->Startphase_beendet = [this] {
        platz_.Startphase = false;
        kanal_->Letzte_Datei_merken({});
        daten_->sperre.Sperre_melden(daten_->K());
    };
    haupt_->schließen = [this] { return Schließen(); };
    haupt_->Datenordner_wiederherstellen = [this] { return Datenordner_wiederherstellen(); };
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
    if (platz_.Startmeldung.empty()) return daten_->sperre.Aufhebung_anbieten(daten_->K(), false);
    // Who may not use the program sees the empty window, then the reason.
    if (haupt_->form().view()) haupt_->form().view()->paint_now();
    app_.Pause(1);
    throw Programmabbruch(u"modKalvora - Main", platz_.Startmeldung, u"NoLog");
}

// Who may do it is asked again: the menu is as old as the last look at the configuration. Own rows that
// nobody has seen yet belong to the state that is left; they go into its backup.
bool Programm::Datenordner_wiederherstellen() {
    daten_->Vor_dem_Schreiben_auffrischen();
    daten_->sperre.Programmsperre_prüfen();
    if (daten_->K().Benutzerrolle != 2) {
        app_.Hinweis(u"Diese Funktion ist Administratoren vorbehalten.");
        return false;
    }
    const Text sicherung = Sicherung_wählen(*kanal_, platz_, *wiederherstellung_);
    if (sicherung.empty()) return false;
    daten_->erfassung.Ausstehende_abschließen();
    Datenübernahme übernahme(app_, *kanal_, platz_, daten_->konfig, *wiederherstellung_, *ersatz_);
    return mit_Fortschritt([&] { return übernahme.Wiederherstellungspunkt(sicherung); });
}

// Closing the main window. What was saved but not yet seen is looked for first.
bool Programm::Schließen() {
    if (!läuft_) return true;
    daten_->sperre.Aufhebung_anbieten(daten_->K(), true);
    haupt_->Fenster_merken();
    daten_->ini.Inidatei_schreiben();
    daten_->erfassung.Ausstehende_abschließen();
    for (Form* form : std::vector<Form*>(app_.forms()))
        if (form != &haupt_->form()) app_.close(*form);
    läuft_ = false;
    // No handle stays on the shared folder; a temp folder that has gone meanwhile is no reason to complain
    // now.
    (void)plattform_.fs.change_folder(platz_.Temppfad);
    return true;
}

} // namespace kalvora
