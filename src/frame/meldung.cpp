#include "frame/meldung.h"

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView ENDE = u"Das Programm wird beendet.";
constexpr int FEHLER_UNBEKANNT = 51;

} // namespace

void Meldung::zeigen(const Text& text) const {
    if (!still_) app_.Hinweis(text);
}

// The report itself must never be the next failure.
void Meldung::protokollieren(const Text& text) {
    if (!d_) return;
    try {
        d_->erfassung.Sammeln(false);
        d_->log.Logbuch_ergänzen(2, text);
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a log failure never stops anybody
    }
}

void Meldung::berichten(const std::exception_ptr& fehler, bool still) {
    still_ = still;
    if (d_) d_->kanal.verwerfen();
    while (app_.Sanduhr_an())
        app_.Sanduhr(false);
    try {
        std::rethrow_exception(fehler);
    } catch (const Programmabbruch& abbruch) {
        Programmabbruch_melden(abbruch);
    } catch (const Dateischaden& schaden) {
        Startfehler(schaden.text(), schaden.datei);
    } catch (const Laufzeitfehler& laufzeit) {
        Fehlerbehandlung(laufzeit);
    } catch (const std::exception& anderer) {
        Fehlerbehandlung(Laufzeitfehler(FEHLER_UNBEKANNT, aus_utf8(anderer.what())));
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

// Nothing is deleted and nothing rewritten: the text says which file stands in the way.
void Meldung::Startfehler(const Text& text, const Text& datei) {
    const bool genannt = datei.empty() || enthält(text, Dateiname_aus_Pfad(datei));
    zeigen(u"Es ist folgendes Problem aufgetreten:\n\n" + text +
           (genannt ? Text() : u"\n\nDatei: " + Pfad_kürzen(datei, 100)) + u"\n\n" + Text(ENDE));
    protokollieren(u"Startfehler: " + text);
}

void Meldung::Fehlerbehandlung(const Laufzeitfehler& fehler) {
    const Text modul =
        (fehler.prozedur.empty() ? Text(u"modKalvora") : fehler.prozedur) + u" - v" + Text(PROGRAMMVERSION);
    const Text datei = fehler.datei.empty() && d_ ? d_->kanal.Letzte_Datei() : fehler.datei;
    const Text nummer = ziffern(fehler.nummer);
    if (!datei.empty() && platz_.Startphase)
        return Startfehler(u"Modul '" + modul + u"' - Fehler Nr. " + nummer + u" - " + fehler.text() +
                               u" - Zuletzt geöffnete Datei: " + datei,
                           datei);
    Text log = u"Programmabbruch durch '" + modul + u"' - Fehler Nr. " + nummer + u" - " + fehler.text();
    if (ist_Dateifehler(fehler.nummer)) {
        const Text wo = datei.empty() ? u" Prüfen Sie, ob auf den Ordner " + ParentDir(platz_.Datenpfad) +
                                            u" zugegriffen werden kann."
                                      : u"Zuletzt geöffnete Datei: " + datei;
        zeigen(u"Es ist ein Fehler beim Dateizugriff aufgetreten.\n\n" + wo + u"\n\n" + Text(ENDE));
        if (!datei.empty()) log += u" - Datei " + datei;
    } else {
        const Text firma = d_ ? klein(links(d_->K().Firma, 3)) : Text();
        zeigen(u"Es ist folgender Fehler aufgetreten in Modul '" + modul + firma + u"':\n\nFehler Nr. " +
               nummer + u"\n" + fehler.text() + u"\n\n" + Text(ENDE));
    }
    protokollieren(log);
}

} // namespace kalvora
