#include "plan/monatsansicht.h"

#include <algorithm>

namespace kalvora {

namespace {

constexpr double LANGSAM_AB = 0.25; // seconds
constexpr Farbe KOPFFARBE = 0xF1EBE6;
constexpr int ZWEIZEILIG_AB = 361; // twips: from this width on the weekday stands above the day

bool ist_leer(const Cell& zelle) {
    return zelle.text.empty();
}

} // namespace

void Monatsansicht::Daten_anzeigen(bool ohne_Wartezeiger) {
    als_Prozedur(u"frmKalvora - Daten_anzeigen", [&] {
        d_.CheckKonfigdaten();
        d_.CheckMitarbeiterdaten();
        if (d_.Neu_gelesen_abholen() && Daten_geändert_behandeln) Daten_geändert_behandeln();
        const double beginn = d_.kanal.werk().uhr().steady();
        const int gestört = d_.app.interruptions();
        {
            const bool warten = d_.platz.Langsame_Anzeige && !d_.app.Sanduhr_an() && !ohne_Wartezeiger;
            const Application::Sanduhrwache sanduhr(d_.app, warten);
            Tabellen_aufbauen();
        }
        if (nach_dem_Anzeigen) nach_dem_Anzeigen();
        if (d_.app.interruptions() != gestört || d_.kanal.werk().uhr().steady() - beginn < LANGSAM_AB) return;
        d_.platz.Langsame_Anzeige = true;
        d_.ini.wahl().Fensterdaten_(fenster::LANGSAM) = 1;
    });
}

void Monatsansicht::Tabellen_aufbauen() {
    Table& plan = f_.msgFlexGrid;
    if (Anzeige(fenster::KALENDERWOCHEN) || Anzeige(fenster::KALENDERWOCHEN_DRUCKEN)) Kalenderwochen();
    const Table::Zeichenpause pause(plan), summenpause(f_.msgFlexTaSu);
    plan.set_highlight(-1, -1, plan.highlight_colour()); // it was a row's number
    plan.resize(0, SPALTEN);
    plan.resize(1, SPALTEN);
    Überschriften_der_Tage();
    Zeilen_filtern();
    if (plan.rows() != zeilen_angeordnet_ && zeilen_angeordnet_ >= 1 && Tabellenfelder_anordnen)
        Tabellenfelder_anordnen();
    zeilen_angeordnet_ = plan.rows();
    Daten_in_Tabellenfeld_ausgeben();
    Tage_einfärben();
    if (Markierung_aufheben) Markierung_aufheben();
    if (Anzeige(fenster::TAGESSUMMEN)) Summen_ausgeben();
}

void Monatsansicht::Kalenderwochen() {
    Table& wochen = f_.msgFlexKaWo;
    const Table::Zeichenpause pause(wochen);
    wochen.resize(1, SPALTEN);
    const Feld<Text> zeile = Kalenderwochenzeile(monat_);
    Cell* zellen = wochen.edit_row(0);
    zellen[0] = Cell{{}, 0, KOPFFARBE, u' ', false};
    for (int spalte = 1; spalte < SPALTEN; ++spalte)
        zellen[spalte] = Cell{zeile(spalte), 0x606060, KOPFFARBE, u' ', false};
    wochen.set_merged(true);
}

// Columns beyond the month's last day keep an empty heading: the entry pipeline relies on that.
void Monatsansicht::Überschriften_der_Tage() {
    Table& plan = f_.msgFlexGrid;
    const bool zweizeilig = plan.col_width(1) < 0 || plan.col_width(1) >= ZWEIZEILIG_AB;
    Cell* kopf = plan.edit_row(0);
    for (int spalte = 0; spalte < SPALTEN; ++spalte) {
        kopf[spalte] = Cell{{}, 0, KOPFFARBE, u' ', false};
        plan.set_group_begins(spalte, false);
    }
    kopf[0].text = u"Name";
    const Datum erster = FormatDatumSD(monat_ + u"01");
    for (int tag = 1; tag <= Monatslänge(); ++tag) {
        const int wochentag = Wochentag(erster + tag - 1); // 1 Monday
        kopf[tag].text = Text(Wochentag_kurz(wochentag)) + (zweizeilig ? u'\r' : u' ') + ziffern(tag);
        plan.set_group_begins(tag, wochentag == 1);
    }
}

// A heading switches the flags for everybody below it, up to the next heading. An employee outside his span
// of employment is absent; the first and the last month of the span are shown whole.
std::vector<int> Monatsansicht::Zeilen_des_Monats() const {
    const Feld<Mitarbeiter>& ma = d_.personal.MA();
    const bool eingeschränkt = d_.K().Setting(1) == 2 && d_.K().Benutzerrolle != 2;
    const Text erlaubt = u":" + d_.platz.Erlaubte_Überschriften;
    Text gruppe;
    if (d_.Anzeigegruppen_vorhanden()) {
        const Text& zeile =
            d_.Anzeigegruppen(std::min(d_.ini.wahl().Gruppenauswahl + 1, d_.Anzeigegruppen.anzahl()));
        gruppe = u":" + Text(mitte(zeile, position(zeile, u"|") + 1));
    }
    bool Berechtigt = true, Gruppe_passt = true;
    std::vector<int> zeilen;
    for (int i = 1; i <= ma.oben(); ++i) {
        const Mitarbeiter& m = ma(i);
        if (m.Überschrift() && !m.MA_Name.empty()) {
            const Text name = u":" + m.MA_Name + u":";
            if (eingeschränkt) Berechtigt = enthält(erlaubt, name);
            if (d_.Anzeigegruppen_vorhanden()) Gruppe_passt = enthält(gruppe, name);
        }
        const bool im_Monat = m.Überschrift() || (links(m.MA_Von, 4) <= TextView(monat_) &&
                                                  links(m.MA_Bis, 4) >= TextView(monat_));
        if (Berechtigt && Gruppe_passt && im_Monat) zeilen.push_back(i);
    }
    return zeilen;
}

void Monatsansicht::Zeilen_filtern() {
    Table& plan = f_.msgFlexGrid;
    const std::vector<int> zeilen = Zeilen_des_Monats();
    plan.resize(1 + std::max(1, static_cast<int>(zeilen.size())), SPALTEN);
    const Cell leer{{}, Grundfarbe(0), Grundfarbe(0), u' ', false};
    for (int row = 1; row < plan.rows(); ++row) {
        Cell* zellen = plan.edit_row(row);
        std::fill(zellen + 1, zellen + SPALTEN, leer);
        zellen[0] = Cell{{}, 0, Grundfarbe(3), u' ', false};
        plan.set_row_kind(row, RowKind::Blank);
        if (zeilen.empty()) continue;
        const Mitarbeiter& m = d_.personal.MA()(zeilen[static_cast<std::size_t>(row - 1)]);
        zellen[0].text = m.MA_Name;
        zellen[SPALTE_BENID].text = m.MA_BenId;
        if (m.Überschrift()) zellen[0].back = Grundfarbe(4);
        plan.set_row_kind(row, !m.Überschrift()     ? RowKind::Plain
                               : !m.MA_Name.empty() ? RowKind::Heading
                                                    : RowKind::Blank);
    }
    if (d_.personal.leer()) plan.edit(1, 0).text.clear();
}

void Monatsansicht::Daten_in_Tabellenfeld_ausgeben() {
    kommentare_.clear();
    summen_.assign(static_cast<std::size_t>(d_.K().U()) * TAGE, 0);
    const bool gelesen = d_.erfassung.Erfassungsdaten_lesen(monat_);
    klassen_ = Monatsklassen(Tagesregeln{monat_, d_.erfassung.Ausnahmedaten(), d_.K().Wochenendtage,
                                         d_.feiertage.berechnet().Feiertagsschlüssel});
    if (!gelesen) return;
    const Table& plan = f_.msgFlexGrid;
    for (int row = 1; row < plan.rows(); ++row) {
        if (Überschriftzeile(row)) continue;
        Zeile_ausgeben(row);
        if (!d_.erfassung.monat().Kommentardaten.leer()) Kommentare_ausgeben(row);
    }
}

void Monatsansicht::Zeile_ausgeben(int row) {
    const Konfiguration& k = d_.K();
    const int nr = d_.erfassung.monat().letzter_Satz(BenId(row));
    if (nr == 0) return;
    const Text& tage = d_.erfassung.monat().Erfassungsdaten(nr).tage;
    const bool alles_sichtbar = k.Benutzerrolle >= 1 || d_.Eigene_Zeile(BenId(row));
    Cell* zellen = f_.msgFlexGrid.edit_row(row);
    for (int tag = 1; tag <= TAGE; ++tag) {
        Cell& zelle = zellen[tag];
        const char16_t code = tage[static_cast<std::size_t>(tag - 1)];
        if (code == u' ') continue;
        const int b = k.SFDec(code);
        zelle.code = code;
        if (b == k.U() + 1) {
            zelle.fore = zelle.back = Grundfarbe(1);
            zelle.text = FESTES_LEERZEICHEN;
        } else if (b > k.U()) {
            zelle.code = u' ';
        } else if (alles_sichtbar || k.SF(b).SF_Verbergen != 1) {
            const Schaltfläche& sf = k.SF(b);
            zelle =
                Cell{Text(1, sf.SF_Kennbuchstabe), sf.SF_Schriftfarbe, sf.SF_Hintergrundfarbe, code, false};
            ++summen_[static_cast<std::size_t>((b - 1) * TAGE + tag - 1)];
        } else if (k.Setting(43) == 1) {
            zelle.back = Grundfarbe(1);
            zelle.text = u" ";
        }
    }
}

// A hidden cell, whose text is one blank, shows no comment; a person's free day does.
void Monatsansicht::Kommentare_ausgeben(int row) {
    const auto kommentare = d_.erfassung.monat().Kommentare(BenId(row));
    const bool fett = d_.K().Setting(6) == 0;
    for (int tag = 1; tag <= TAGE; ++tag) {
        const Text& kommentar = kommentare[static_cast<std::size_t>(tag)];
        if (kommentar.empty() || trimmen(f_.msgFlexGrid.cell(row, tag).text).empty()) continue;
        kommentare_[row * SPALTEN + tag] = kommentar;
        if (fett) f_.msgFlexGrid.edit(row, tag).bold = true;
    }
}

Farbe Monatsansicht::Tagesfarbe(int tag) const {
    if (Feiertag(tag)) return Grundfarbe(2);
    if (Wochenende(tag)) return Grundfarbe(1);
    const bool heute = Heute_im_Monat() && tag == Heute_Tag() && d_.K().Setting(9) == 0;
    const bool Spalte_hervorgehoben = d_.ini.wahl().Fensterdaten_(fenster::HERVORHEBUNG) != 3;
    return heute && Spalte_hervorgehoben ? Grundfarbe(7) : Grundfarbe(0);
}

void Monatsansicht::Spalte_einfärben(int tag, Farbe farbe, bool auch_Arbeitsfrei) {
    Table& plan = f_.msgFlexGrid;
    for (int row = 1; row < plan.rows(); ++row) {
        const Cell& zelle = plan.cell(row, tag);
        const bool frei =
            auch_Arbeitsfrei && zelle.text.size() == 1 && zelle.text.front() == FESTES_LEERZEICHEN;
        if (ist_leer(zelle) || frei) plan.edit(row, tag).back = farbe;
    }
    if (!Anzeige(fenster::TAGESSUMMEN)) return;
    for (int row = 0; row < f_.msgFlexTaSu.rows(); ++row)
        f_.msgFlexTaSu.edit(row, tag).back = farbe;
}

void Monatsansicht::Heute_einfärben() {
    Table& plan = f_.msgFlexGrid;
    plan.set_marked_col(0);
    if (d_.K().Setting(9) != 0 || !Heute_im_Monat()) return;
    const int tag = Heute_Tag();
    plan.set_marked_col(tag);
    plan.edit(0, tag).back = Grundfarbe(6);
    const auto schlicht = [&](const Cell& z) { return z.back == Grundfarbe(0) || z.back == 0; };
    if (d_.ini.wahl().Fensterdaten_(fenster::HERVORHEBUNG) != 3)
        for (int row = 1; row < plan.rows(); ++row)
            if (ist_leer(plan.cell(row, tag)) && schlicht(plan.cell(row, tag)))
                plan.edit(row, tag).back = Grundfarbe(7);
    if (Anzeige(fenster::TAGESSUMMEN))
        for (int row = 0; row < f_.msgFlexTaSu.rows(); ++row)
            if (schlicht(f_.msgFlexTaSu.cell(row, tag))) f_.msgFlexTaSu.edit(row, tag).back = Grundfarbe(7);
}

// Later rules win: weekend, holiday, school holidays (heading only), today, heading rows.
void Monatsansicht::Tage_einfärben() {
    Table& plan = f_.msgFlexGrid;
    if (Anzeige(fenster::TAGESSUMMEN))
        for (int row = 0; row < f_.msgFlexTaSu.rows(); ++row)
            for (int tag = 1; tag <= TAGE; ++tag)
                f_.msgFlexTaSu.edit(row, tag).back = Grundfarbe(0);
    for (int tag = 1; tag <= Monatslänge(); ++tag)
        if (Wochenende(tag) && !Feiertag(tag)) Spalte_einfärben(tag, Grundfarbe(1), false);
    for (int tag = 1; tag <= Monatslänge(); ++tag)
        if (Feiertag(tag)) Spalte_einfärben(tag, Grundfarbe(2), true);
    for (int tag = 1; tag <= TAGE; ++tag)
        if (d_.ferien.Ferientag(tag)) plan.edit(0, tag).back = d_.ferien.Ferienfarbe();
    Heute_einfärben();
    if (!Anzeige(fenster::ÜBERSCHRIFTEN)) return;
    for (int row = 1; row < plan.rows(); ++row) {
        if (!Überschriftzeile(row)) continue;
        Cell* zellen = plan.edit_row(row);
        for (int tag = 1; tag <= TAGE; ++tag)
            zellen[tag].back = Grundfarbe(4);
    }
}

void Monatsansicht::Summen_ausgeben() {
    Table& summen = f_.msgFlexTaSu;
    for (int b = 1; b < std::min(d_.K().U(), summen.rows()); ++b)
        for (int tag = 1; tag <= TAGE; ++tag) {
            const int wert = Tagessumme(b, tag);
            summen.edit(b, tag).text = wert == 0 ? Text() : ziffern(wert);
        }
}

// Row r stands for reason r; row 0 and the reasons that the user has deselected have no height, and the
// delete button has no row.
void Monatsansicht::Tagessummen_initialisieren() {
    Table& summen = f_.msgFlexTaSu;
    summen.set_visible(Anzeige(fenster::TAGESSUMMEN));
    if (!summen.visible()) return;
    const Konfiguration& k = d_.K();
    const Table::Zeichenpause pause(summen);
    summen.set_backdrop(Grundfarbe(0));
    summen.set_grid_colour(Grundfarbe(5));
    if (summen.rows() != k.U()) { // what the sums show is not this layout's matter
        summen.resize(0, SPALTE_BENID);
        summen.resize(k.U(), SPALTE_BENID);
    }
    summen.set_row_height(0, 0);
    for (int b = 1; b < k.U(); ++b) {
        const bool gewählt = zeichen(d_.ini.wahl().TaSum, b) != u'0';
        summen.set_row_height(b, gewählt ? -1 : 0);
        summen.edit(b, 0) =
            Cell{k.SF(b).SF_Text, k.SF(b).SF_Schriftfarbe, k.SF(b).SF_Hintergrundfarbe, u' ', false};
    }
}

int Monatsansicht::Zeile_zu_BenId(TextView gesucht) const {
    for (int row = 1; row < f_.msgFlexGrid.rows(); ++row)
        if (!Überschriftzeile(row) && gleich_ohne_Fall(BenId(row), gesucht)) return row;
    return 0;
}

Text Monatsansicht::Zellkommentar(int row, int tag) const {
    const auto treffer = kommentare_.find(row * SPALTEN + tag);
    return treffer == kommentare_.end() ? Text() : treffer->second;
}

int Monatsansicht::Tagessumme(int b, int tag) const {
    const auto stelle = static_cast<std::size_t>((b - 1) * TAGE + tag - 1);
    return stelle < summen_.size() ? summen_[stelle] : 0;
}

Text Monatsansicht::Feiertag_Name(int tag) const {
    if (!Feiertag(tag)) return {};
    const auto name = Feiertagsname(d_.feiertage.berechnet(), monat_ + ziffern(tag, 2));
    if (!name) return u"Einmaliger Feiertag " + d_.platz.datum().FormatDatumSA(monat_ + ziffern(tag, 2));
    return name->empty() ? Text(u"Jährlich wiederkehrender Feiertag") : *name;
}

} // namespace kalvora
