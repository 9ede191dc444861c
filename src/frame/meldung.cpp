#include "frame/meldung.h"

#include <algorithm>
#include <new>
#include <utility>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView ENDE = u"Das Programm wird beendet.";
constexpr int FEHLER_UNBEKANNT = 51;

} // namespace

Laufzeitfehler als_Laufzeitfehler(const std::exception& fehler) {
    if (const auto* laufzeit = dynamic_cast<const Laufzeitfehler*>(&fehler)) return *laufzeit;
    if (dynamic_cast<const std::bad_alloc*>(&fehler))
        return {FEHLER_SPEICHER, u"Nicht genügend Arbeitsspeicher"};
    return {FEHLER_UNBEKANNT, aus_utf8(fehler.what())};
}

void Meldung::zeigen(const Text& text) const {
    if (!still_) app_.Hinweis(text);
}

// The report itself must never be the next failure. A record is one line: paragraphs are put behind each
// other.
void Meldung::protokollieren(Text text) {
    if (!d_) return;
    try {
        for (std::size_t ende = 0; (ende = text.find(u'\n')) != Text::npos;)
            text.replace(ende, std::min(text.find_first_not_of(u'\n', ende), text.size()) - ende, u" ");
        d_->erfassung.Sammeln(false);
        d_->log.Logbuch_ergänzen(2, text);
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a log failure never stops anybody
    }
}

// Letzte_Datei stays: it says which file was being judged.
void Meldung::aufräumen() const {
    if (d_) d_->kanal.verwerfen();
}

void Meldung::berichten(const std::exception_ptr& fehler, bool still) {
    still_ = still;
    aufräumen();
    einordnen(fehler);
}

void Meldung::berichten_und_weiter(const Laufzeitfehler& fehler) {
    weiter_ = true;
    aufräumen();
    Fehlerbehandlung(fehler);
}

void Meldung::einordnen(const std::exception_ptr& fehler) {
    try {
        std::rethrow_exception(fehler);
    } catch (const Programmabbruch& abbruch) {
        Programmabbruch_melden(abbruch);
    } catch (const Dateischaden& schaden) {
        Startfehler(schaden);
    } catch (const Zugriffsabbruch& abbruch) {
        Programmabbruch_melden({u"modKalvora - Datei_öffnen", abbruch.text(), abbruch.logtext});
    } catch (const Laufzeitfehler& laufzeit) {
        Fehlerbehandlung(laufzeit);
    } catch (const std::exception& anderer) {
        Fehlerbehandlung(als_Laufzeitfehler(anderer));
    }
}

void Meldung::Programmabbruch_melden(const Programmabbruch& abbruch) {
    zeigen(abbruch.text().empty() ? Text(links(ENDE, static_cast<int>(ENDE.size()) - 1))
                                  : abbruch.text() + u"\n\n" + Text(ENDE));
    if (abbruch.logtext == u"NoLog") return;
    protokollieren(abbruch.logtext.empty()
                       ? u"Programmabbruch durch '" + abbruch.modul + u"' - " + abbruch.text()
                       : abbruch.logtext);
}

// A repair that fails itself is reported and not repaired. Files that no repair is for stay as they are: the
// text says which one stands in the way.
void Meldung::Startfehler(const Dateischaden& schaden) {
    if (reparatur_ && !still_ && reparatur_->zuständig(schaden)) {
        Reparatur& reparatur = *std::exchange(reparatur_, nullptr);
        std::exception_ptr ausgang;
        try {
            reparatur.Startfehler(schaden);
        } catch (...) {
            ausgang = std::current_exception();
        }
        d_->kanal.verwerfen();
        d_->kanal.Letzte_Datei_merken({});
        return einordnen(ausgang);
    }
    const Text &text = schaden.text(), &datei = schaden.datei;
    const bool genannt = datei.empty() || enthält(text, Dateiname_aus_Pfad(datei));
    zeigen(u"Es ist folgendes Problem aufgetreten:\n\n" + text +
           (genannt ? Text() : u"\n\nDatei: " + Pfad_kürzen(datei, 100)) + u"\n\n" + Text(ENDE));
    protokollieren(u"Startfehler: " + text);
}

// A window whose layout lacks a control was not installed whole.
void Meldung::Installation_melden(const Laufzeitfehler& fehler) {
    Programmabbruch_melden({u"modKalvora - Main",
                            u"Es ist folgender Fehler aufgetreten:\n\nFehler Nr. " + ziffern(fehler.nummer) +
                                u"\n" + fehler.text() +
                                u"\n\nDer Kalvora ist auf diesem Rechner nicht korrekt installiert. Bitte "
                                u"führen Sie die Installation "
                                u"noch einmal durch.\n\nHinweis: Ein Kopieren des Programms von einem "
                                u"Rechner auf einen anderen Rechner "
                                u"ist nicht möglich. Das Programm muss mit Administratorberechtigung "
                                u"installiert werden, damit alle "
                                u"benötigten Systemdateien mitinstalliert und registriert werden",
                            u"NoLog"});
}

void Meldung::Fehlerbehandlung(const Laufzeitfehler& fehler) {
    if (fehler.nummer == FEHLER_BAUTEIL) return Installation_melden(fehler);
    const Text modul =
        (fehler.prozedur.empty() ? Text(u"modKalvora") : fehler.prozedur) + u" - v" + Text(PROGRAMMVERSION);
    const Text gerade_gelesen = d_ ? d_->kanal.Letzte_Datei() : Text();
    const Text datei = fehler.datei.empty() ? gerade_gelesen : fehler.datei;
    const Text nummer = ziffern(fehler.nummer);
    // A fault while the lines of a file are being judged is a fault of that file; one of the disk is none.
    if (!gerade_gelesen.empty() && platz_.Startphase && !weiter_ && !ist_Dateifehler(fehler.nummer) &&
        fehler.nummer != FEHLER_SPEICHER) {
        Dateischaden schaden(u"Modul '" + modul + u"' - Fehler Nr. " + nummer + u" - " + fehler.text() +
                                 u" - Zuletzt geöffnete Datei: " + gerade_gelesen,
                             gerade_gelesen);
        schaden.nur_Verdacht = true;
        return Startfehler(schaden);
    }
    const Text schluss = weiter_ ? Text() : u"\n\n" + Text(ENDE);
    Text log = u"Programmabbruch durch '" + modul + u"' - Fehler Nr. " + nummer + u" - " + fehler.text();
    if (ist_Dateifehler(fehler.nummer)) {
        const Text wo = datei.empty() || datei.ends_with(u'/')
                            ? u" Prüfen Sie, ob auf den Ordner " + ParentDir(platz_.Datenpfad) +
                                  u" zugegriffen werden kann."
                            : u"Zuletzt geöffnete Datei: " + datei;
        const Text ursache = fehler.nummer == FEHLER_VOLL
                                 ? u"\n\nUrsache: " + Text(Fehlerursache(FEHLER_VOLL)) + u"."
                                 : Text();
        zeigen(u"Es ist ein Fehler beim Dateizugriff aufgetreten.\n\n" + wo + ursache + schluss);
        if (!datei.empty()) log += u" - Datei " + datei;
    } else {
        const Text firma = d_ ? klein(links(d_->K().Firma, 3)) : Text();
        zeigen(u"Es ist folgender Fehler aufgetreten in Modul '" + modul + firma + u"':\n\nFehler Nr. " +
               nummer + u"\n" + fehler.text() + schluss);
    }
    protokollieren(log);
}

} // namespace kalvora
