#include "plan/eintragung.h"

namespace kalvora {

namespace {

bool ist_Arbeitsfrei(const Cell& zelle) {
    return zelle.text.size() == 1 && zelle.text.front() == FESTES_LEERZEICHEN;
}

} // namespace

Sammlung::~Sammlung() {
    d_.erfassung.Speicherpuffer_leeren();
    d_.log.Logpuffer_leeren();
    d_.erfassung.Sammeln(false);
}

bool Sammlung::abschließen() {
    if (!d_.erfassung.Datensatz_speichern({})) return false;
    d_.log.Logbuch_ergänzen(1, {});
    return true;
}

void Eintragung::Markierung_aufheben() {
    f_.msgFlexGrid.set_selection({});
    f_.msgFlexGrid.set_HighLight(false);
}

void Eintragung::neu_laden() {
    ansicht_.Daten_anzeigen(false);
}

// Rows are remembered by who they are: a rebuild may move, add or drop some.
Eintragung::Auswahl Eintragung::Auswahl_merken() const {
    const Table& plan = f_.msgFlexGrid;
    Auswahl auswahl{plan.selection(), plan.HighLight(), {}};
    const Markierung m = Markierung_merken();
    for (int row = m.Zeile_von; auswahl.markiert && row <= m.Zeile_bis && row < plan.rows(); ++row)
        auswahl.wer.push_back(Zeilenname(row));
    return auswahl;
}

Text Eintragung::Zeilenname(int row) const {
    const Text& BenId = ansicht_.BenId(row);
    return BenId.empty() ? u":" + f_.msgFlexGrid.cell(row, 0).text : klein(BenId);
}

// The marking comes back only where exactly the same rows stand one below the other.
bool Eintragung::Auswahl_wiederherstellen(const Auswahl& auswahl) {
    if (!auswahl.markiert) return true;
    Table& plan = f_.msgFlexGrid;
    const int anzahl = static_cast<int>(auswahl.wer.size());
    for (int row = 1; anzahl > 0 && row + anzahl <= plan.rows(); ++row) {
        bool gleich = true;
        for (int k = 0; gleich && k < anzahl; ++k)
            gleich = Zeilenname(row + k) == auswahl.wer[static_cast<std::size_t>(k)];
        if (!gleich) continue;
        const int versatz = row - std::min(auswahl.s.row, auswahl.s.row_sel);
        plan.set_selection(
            {auswahl.s.row + versatz, auswahl.s.col, auswahl.s.row_sel + versatz, auswahl.s.col_sel});
        plan.set_HighLight(true);
        return true;
    }
    return false;
}

// An old reason table or staff list must never be written with. When they have changed, the month is shown
// anew, and the marking goes on if the pressed reason still is what it was.
bool Eintragung::Stand_auffrischen(int b) {
    const Auswahl auswahl = Auswahl_merken();
    const std::optional<Schaltfläche> grund = b <= d_.K().U() ? std::optional(d_.K().SF(b)) : std::nullopt;
    const int U = d_.K().U();
    // What a colleague has saved meanwhile must not be written over from cells that do not show it yet.
    const bool Monat_neu = d_.erfassung.Monat_geändert();
    if (!d_.Vor_dem_Schreiben_auffrischen() && !Monat_neu) return true;
    neu_laden();
    const bool gleicher_Grund = d_.K().U() == U && (!grund || d_.K().SF(b) == *grund);
    if (Auswahl_wiederherstellen(auswahl) && gleicher_Grund) return true;
    Markierung_aufheben();
    d_.app.Hinweis(
        u"Die gemeinsamen Daten wurden zwischenzeitlich von jemand anderem geändert und neu geladen. Bitte "
        u"nehmen Sie den Eintrag noch einmal vor.");
    return false;
}

void Eintragung::Schaltfläche_gedrückt(int b) {
    als_Prozedur(u"frmKalvora - cmdAuswahl_Click", [&] {
        if (!Stand_auffrischen(b) || b > d_.K().U()) return;
        kopierpuffer_ = Text(1, d_.K().SFHex(b));
        Table& plan = f_.msgFlexGrid;
        const Table::Zeichenpause pause(plan);
        const Selection s = plan.selection();
        if (d_.K().Benutzerrolle >= 1 && s.row != s.row_sel && plan.HighLight() && d_.K().Setting(44) == 0)
            Tabellenzeilen_ändern(b);
        else
            Tabellenzeile_ändern(b);
    });
}

void Eintragung::Arbeitsfrei_kennzeichnen(int row, int tag) {
    als_Prozedur(u"frmKalvora - Arbeitsfrei_kennzeichnen", [&] {
        f_.msgFlexGrid.set_selection({row, tag, row, tag});
        f_.msgFlexGrid.set_HighLight(true);
        const int U = d_.K().U();
        if (!Stand_auffrischen(U + 1)) return;
        const Table::Zeichenpause pause(f_.msgFlexGrid);
        Tabellenzeile_ändern(d_.K().U() + 1);
        kopierpuffer_ = Text(1, d_.K().SFHex(d_.K().U() + 1));
    });
}

bool Eintragung::Eingabe_erlaubt(int b) {
    if (!d_.personal.Mitarbeiter_vorhanden()) return false;
    const Konfiguration& k = d_.K();
    if (b <= k.U() && k.SF(b).SF_Nur_Admin != 0 && k.Benutzerrolle == 0) {
        d_.app.Hinweis(u"Diese Schaltfläche ist folgenden Administratoren vorbehalten: " +
                       k.Administratorenliste());
        return false;
    }
    if (f_.msgFlexGrid.HighLight()) return true;
    if (!Hinweis_gezeigt_)
        d_.app.Hinweis(
            u"Bitte markieren Sie mit der Maus den Zeitraum für den Sie Eintragungen vornehmen möchten und "
            u"betätigen Sie die Schaltfläche dann erneut.");
    Hinweis_gezeigt_ = true;
    return false;
}

void Eintragung::Tabellenzeile_ändern(int b) {
    const Konfiguration& k = d_.K();
    if (!Eingabe_erlaubt(b)) return;
    Spanne spanne;
    const Selection s = f_.msgFlexGrid.selection();
    if (s.row == s.row_sel && s.row >= 1 && !f_.msgFlexGrid.row_visible(s.row))
        f_.msgFlexGrid.set_TopRow(s.row);
    const Befund befund = Plausibilitätsprüfung(b, s, spanne);
    if (befund == Befund::Nichts) Markierung_aufheben();
    if (befund != Befund::Ok) return;
    if (b == k.U() && k.Setting(12) == 0 && nur_freie_Tage(spanne)) {
        d_.app.Hinweis(
            u"Arbeitsfreie Tage können nur gelöscht werden, indem Sie auf den Eintrag doppelklicken");
        return;
    }
    const Änderung änderung = Zellen_ändern(b, spanne);
    if (!änderung.Daten_geändert) return Markierung_aufheben();
    const auto speichern = [&] {
        const bool warten = d_.platz.Langsame_Anzeige && !d_.app.Sanduhr_an();
        const Application::Sanduhrwache sanduhr(d_.app, warten);
        return Änderung_speichern(b, spanne, änderung.Arbeitsfrei_entfernt);
    };
    if (!speichern()) return neu_laden();
    Nacharbeit(true);
}

// All rows are checked before the first changes; then one file open serves all of them.
void Eintragung::Tabellenzeilen_ändern(int b) {
    if (!Eingabe_erlaubt(b)) return;
    const Markierung m = Markierung_merken();
    std::vector<Spanne> spannen;
    if (m.Zeile_von < 1) return; // the heading is no anchor
    for (int row = m.Zeile_von; row <= m.Zeile_bis && row < f_.msgFlexGrid.rows(); ++row) {
        if (ansicht_.Überschriftzeile(row)) continue;
        Spanne spanne;
        const Befund befund = Plausibilitätsprüfung(b, {row, m.Spalte_von, row, m.Spalte_bis}, spanne);
        if (befund == Befund::Abgelehnt) return;
        if (befund == Befund::Ok) spannen.push_back(spanne);
    }
    bool ok = true;
    {
        const Application::Sanduhrwache sanduhr(d_.app, d_.platz.Langsame_Anzeige);
        Sammlung sammlung(d_);
        for (const Spanne& spanne : spannen)
            if (const Änderung ä = ok ? Zellen_ändern(b, spanne) : Änderung(); ä.Daten_geändert)
                ok = Änderung_speichern(b, spanne, ä.Arbeitsfrei_entfernt);
        ok = ok && sammlung.abschließen();
    }
    if (!ok) return neu_laden();
    Nacharbeit(false);
}

void Eintragung::Nacharbeit(bool ohne_Wartezeiger) {
    Markierung_aufheben();
    if (d_.ini.wahl().Fensterdaten_(fenster::TAGESSUMMEN) == 1) ansicht_.Daten_anzeigen(ohne_Wartezeiger);
}

// --- checks, in their order -----------------------------------------------------------------------------

bool Eintragung::Zeile_erlaubt(const Selection& s) {
    const Konfiguration& k = d_.K();
    const auto abgelehnt = [&](const Text& text) {
        d_.app.Hinweis(text);
        return false;
    };
    if (s.row != s.row_sel && (k.Setting(44) == 1 || k.Benutzerrolle == 0))
        return abgelehnt(u"Die Markierung darf sich " +
                         Text(k.Benutzerrolle == 0 ? u"nur bei Administratoren" : u"nicht") +
                         u" über mehr als eine Zeile erstrecken");
    if (ansicht_.Überschriftzeile(s.row))
        return abgelehnt(u"Überschriftzeile. In dieser Zeile ist kein Eintrag möglich.");
    if (k.Benutzerrolle > 0) return true;
    const Text nur_von = u"Einträge können nur von folgenden Administratoren vorgenommen werden: ";
    if (k.Setting(10) == 1 || k.Setting(28) == 1) return abgelehnt(nur_von + k.Administratorenliste());
    if (d_.Eigene_Zeile(ansicht_.BenId(s.row))) return true;
    if (d_.personal.Benutzer_eingetragen())
        return abgelehnt(u"Sie dürfen nur für sich selbst Eintragungen vornehmen.\n\nEinträge für andere "
                         u"Mitarbeiter können "
                         u"nur von folgenden Administratoren vorgenommen werden: " +
                         k.Administratorenliste());
    return abgelehnt(u"Sie sind mit Ihrem Windows-Benutzernamen '" + d_.platz.Benutzername +
                     u"' nicht als Mitarbeiter im Kalvora eingetragen.\n\n" + nur_von +
                     k.Administratorenliste());
}

// Days at both ends that the action would not touch fall away. False: none is left.
bool Eintragung::Spanne_trimmen(int b, int row, Spanne& s) const {
    const Konfiguration& k = d_.K();
    const auto zählt = [&](int tag) {
        if (!f_.msgFlexGrid.cell(row, tag).text.empty()) return true;
        if (b == k.U()) return false;
        return k.Setting(12) == 1 || (!ansicht_.Wochenende(tag) && !ansicht_.Feiertag(tag));
    };
    while (s.von <= s.bis && !zählt(s.von))
        ++s.von;
    if (s.von > s.bis) return false;
    while (s.bis >= s.von && f_.msgFlexGrid.cell(0, s.bis).text.empty())
        --s.bis;
    while (s.bis >= s.von && !zählt(s.bis))
        --s.bis;
    return s.von <= s.bis;
}

bool Eintragung::Vergangenheit_erlaubt(const Spanne& s) {
    const Konfiguration& k = d_.K();
    if (k.Setting(45) >= 1) Vergangenheit_bestätigt_ = true;
    if (ansicht_.Anzeigemonat() + ziffern(s.von, 2) >= d_.platz.Heute_S) return true;
    if (k.Setting(46) != 1 && k.Benutzerrolle == 0) {
        d_.app.Hinweis(
            u"Eintrag nicht möglich. Änderungen für in der Vergangenheit liegende Zeiträume sind folgenden "
            u"Administratoren vorbehalten: " +
            k.Administratorenliste());
        return false;
    }
    if (Vergangenheit_bestätigt_) return true;
    Vergangenheit_bestätigt_ =
        d_.app.Frage(u"Achtung! Eintrag für einen in der Vergangenheit liegenden Zeitraum. "
                     u"Möchten Sie das wirklich?") == Antwort::Ja;
    return Vergangenheit_bestätigt_;
}

Eintragung::Befund Eintragung::Plausibilitätsprüfung(int b, const Selection& auswahl, Spanne& spanne) {
    if (auswahl.row < 1 || auswahl.row >= f_.msgFlexGrid.rows()) return Befund::Abgelehnt;
    if (!Zeile_erlaubt(auswahl)) return Befund::Abgelehnt;
    const Markierung m = Markierung::aus(auswahl);
    if (m.Spalte_bis == 0) return Befund::Abgelehnt; // the name alone is marked
    spanne = {auswahl.row, std::max(m.Spalte_von, 1), std::min(m.Spalte_bis, TAGE)};
    if (!Spanne_trimmen(b, auswahl.row, spanne)) return Befund::Nichts;
    return Vergangenheit_erlaubt(spanne) ? Befund::Ok : Befund::Abgelehnt;
}

bool Eintragung::nur_freie_Tage(const Spanne& s) const {
    for (int tag = s.von; tag <= s.bis; ++tag) {
        const Cell& zelle = f_.msgFlexGrid.cell(s.row, tag);
        if (!zelle.text.empty() && !ist_Arbeitsfrei(zelle)) return false;
    }
    return true;
}

// --- cells ----------------------------------------------------------------------------------------------

bool Eintragung::Zelle_leeren(int row, int tag) {
    const Cell& zelle = f_.msgFlexGrid.cell(row, tag);
    const bool geändert = !zelle.text.empty() || zelle.code != u' ';
    const Farbe schrift = d_.K().Grundfarben(0);
    if (geändert) f_.msgFlexGrid.edit(row, tag) = Cell{{}, schrift, ansicht_.Tagesfarbe(tag), u' ', false};
    return geändert;
}

bool Eintragung::Arbeitsfrei_umschalten(int row, int tag) {
    const Cell& zelle = f_.msgFlexGrid.cell(row, tag);
    const bool frei_nach_Plan = ansicht_.Wochenende(tag) || ansicht_.Feiertag(tag);
    if (ist_Arbeitsfrei(zelle)) return Zelle_leeren(row, tag);
    if (!(zelle.text.empty() || d_.erfassung.Sammeln()) || frei_nach_Plan) return false;
    const Farbe farbe = d_.K().Grundfarben(1);
    f_.msgFlexGrid.edit(row, tag) =
        Cell{Text(1, FESTES_LEERZEICHEN), farbe, farbe, d_.K().SFHex(d_.K().U() + 1), false};
    return true;
}

bool Eintragung::Zelle_eintragen(int b, int row, int tag) {
    const Konfiguration& k = d_.K();
    const Cell& zelle = f_.msgFlexGrid.cell(row, tag);
    const bool offen = k.Setting(12) == 1 ||
                       (!ist_Arbeitsfrei(zelle) && !ansicht_.Wochenende(tag) && !ansicht_.Feiertag(tag));
    if (!offen) return !ist_Arbeitsfrei(zelle) && Zelle_leeren(row, tag);
    if (b == k.U()) return Zelle_leeren(row, tag);
    const Schaltfläche& sf = k.SF(b);
    if (zelle.code == k.SFHex(b)) return false;
    const bool fett = zelle.bold;
    f_.msgFlexGrid.edit(row, tag) =
        Cell{Text(1, sf.SF_Kennbuchstabe), sf.SF_Schriftfarbe, sf.SF_Hintergrundfarbe, k.SFHex(b), fett};
    return true;
}

Eintragung::Änderung Eintragung::Zellen_ändern(int b, const Spanne& s) {
    Änderung änderung;
    const bool umschalten = b == d_.K().U() + 1;
    for (int tag = s.von; tag <= s.bis; ++tag) {
        const bool war_frei = ist_Arbeitsfrei(f_.msgFlexGrid.cell(s.row, tag));
        if (!(umschalten ? Arbeitsfrei_umschalten(s.row, tag) : Zelle_eintragen(b, s.row, tag))) continue;
        änderung.Daten_geändert = true;
        if (umschalten && war_frei) änderung.Arbeitsfrei_entfernt = true;
    }
    return änderung;
}

// --- record, log, comments ------------------------------------------------------------------------------

Text Eintragung::Tabellenzeilendaten(int row) const {
    Text satz = u"A:" + ansicht_.BenId(row) + u":";
    const int länge = ansicht_.Monatslänge();
    for (int tag = 1; tag <= TAGE; ++tag)
        satz += tag <= länge ? f_.msgFlexGrid.cell(row, tag).code : u' ';
    return satz;
}

Text Eintragung::Datum_im_Log(int tag) const {
    return ziffern(tag, 2) + ansicht_.Anzeigemonat().substr(2) + ansicht_.Anzeigemonat().substr(0, 2);
}

Text Eintragung::Logzeile(int b, const Spanne& s, bool Arbeitsfrei_entfernt) const {
    const int U = d_.K().U();
    const Text grund = b == U || (b > U && Arbeitsfrei_entfernt) ? Text(u"Löschen")
                       : b > U                                   ? Text(u"Arbeitsfrei")
                                                                 : d_.K().SF(b).SF_Text;
    return ansicht_.BenId(s.row) + u"|" + grund + u"|" + Datum_im_Log(s.von) + u"|" + Datum_im_Log(s.bis);
}

bool Eintragung::Änderung_speichern(int b, const Spanne& s, bool Arbeitsfrei_entfernt) {
    if (!d_.erfassung.Datensatz_speichern(Tabellenzeilendaten(s.row))) return false;
    d_.log.Logbuch_ergänzen(1, Logzeile(b, s, Arbeitsfrei_entfernt));
    return Kommentare_entfernen(s);
}

// A comment goes with the entry that carried it. A stored span may also cover days that were empty: it must
// not come to life again on the new entry.
bool Eintragung::Kommentare_entfernen(const Spanne& s) {
    const auto gespeichert = d_.erfassung.monat().Kommentare(ansicht_.BenId(s.row));
    bool entfernt = false;
    for (int tag = s.von; tag <= s.bis; ++tag) {
        if (ansicht_.Zellkommentar(s.row, tag).empty() && gespeichert[static_cast<std::size_t>(tag)].empty())
            continue;
        entfernt = true;
        ansicht_.Zellkommentar_löschen(s.row, tag);
        f_.msgFlexGrid.edit(s.row, tag).bold = false;
    }
    return !entfernt || d_.erfassung.Datensatz_speichern(
                            als_Zeile(Kommentarsatz{ansicht_.BenId(s.row), s.von, s.bis, {}, 0}));
}

} // namespace kalvora
