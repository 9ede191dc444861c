#include "plan/hauptfenster.h"

#include <algorithm>
#include <utility>

namespace kalvora {

namespace {

constexpr int ZÄHLER_HÖCHSTENS = 1000;

} // namespace

Hauptfenster::Hauptfenster(Gemeinsame_Daten& daten)
    : d_(daten), f_(daten.app), ansicht_(f_, daten), eintragung_(f_, daten, ansicht_), suche_(f_, daten) {
    ansicht_.Markierung_aufheben = [this] { eintragung_.Markierung_aufheben(); };
    ansicht_.Tabellenfelder_anordnen = [this] { Tabellenfelder_anordnen(); };
    ansicht_.Daten_geändert_behandeln = [this] {
        Jahre_anbieten();
        Menüpunkte_aktivieren();
        Tabellenfelder_anordnen();
        Schaltflächen_anordnen();
        Gruppen_anbieten();
        Titel_setzen();
    };
    ansicht_.nach_dem_Anzeigen = [this] { Statuszeile(); };
    Ereignisse_verbinden();
    Tabellen_verbinden();
    Maus_verbinden();
}

void Hauptfenster::öffnen(bool mit_Monat) {
    als_Prozedur(u"frmKalvora - Form_Load", [&] {
        Jahre_anbieten();
        const bool rückblick = d_.platz.Datenrückblick_aktiv;
        f_.tabJahre.set_selected(rückblick ? 0 : 1);
        for (int k = 1; rückblick && k < 3; ++k)
            f_.tabJahre.set_tab_enabled(k, false);
        const bool österreichisch = d_.platz.gebiet.Monatsnamen[0] == u"Jänner";
        f_.tabMonate.set_captions({österreichisch ? u"Jänner" : u"Januar", u"Febr.", u"März", u"April",
                                   u"Mai", u"Juni", u"Juli", u"August", u"Sept.", u"Okt.", u"Nov.", u"Dez."});
        if (!rückblick) f_.tabMonate.set_selected(Kalendertag_aus(d_.platz.Heute).monat - 1);
        f_.msgFlexGrid.set_col_width(0, d_.ini.wahl().Fensterdaten_(fenster::NAMENSBREITE) * 15 / 2);
        f_.msgFlexGrid.set_col_width(SPALTE_BENID, 0);
        Titel_setzen();
        f_.set_font(d_.ini.wahl().Schrift);
        Menüpunkte_aktivieren();
        Schaltflächen_anordnen();
        Tabellenfelder_anordnen();
        Gruppen_anbieten();
        if (mit_Monat) Monat_wechseln();
        Statuszeile();
    });
}

void Hauptfenster::Titel_setzen() {
    const Text jahre = d_.platz.Datenrückblick_aktiv ? u" - Datenrückblick " + ziffern(d_.platz.Startjahr) +
                                                           u" - " + ziffern(d_.platz.Startjahr + 2)
                                                     : Text();
    f_.set_title(u"Kalvora - " + d_.K().Firma + jahre);
}

void Hauptfenster::Monat_wechseln() {
    als_Prozedur(u"frmKalvora - tabMonate_Click", [&] {
        Anzeigemonat_aus_Reitern();
        ansicht_.Daten_anzeigen(false);
        Abfragezähler_ = 0;
        if (Startphase_beendet) std::exchange(Startphase_beendet, nullptr)();
        d_.erfassung.Defragmentieren_wenn_fällig();
    });
}

void Hauptfenster::Neu_aufbauen() {
    d_.Alles_neu_lesen();
    Monat_wechseln();
    d_.app.Hinweis(u"Die Daten wurden erfolgreich wiederhergestellt");
}

void Hauptfenster::Anzeigemonat_aus_Reitern() {
    const Text& jahr = f_.tabJahre.captions()[static_cast<std::size_t>(f_.tabJahre.selected())];
    ansicht_.Anzeigemonat_setzen(Text(rechts(jahr, 2)) + ziffern(f_.tabMonate.selected() + 1, 2));
    d_.ferien.Ferienindex_setzen(ansicht_.Anzeigemonat(),
                                 d_.ini.wahl().Fensterdaten_(fenster::SCHULFERIEN_AUS) == 1);
}

// The years held may have moved on another workstation: the year on show stays if it is still held.
void Hauptfenster::Jahre_anbieten() {
    const int erstes = d_.platz.Startjahr;
    const std::vector<Text> jahre{ziffern(erstes), ziffern(erstes + 1), ziffern(erstes + 2)};
    if (jahre == f_.tabJahre.captions()) return;
    const std::vector<Text> alte = f_.tabJahre.captions();
    const auto gezeigt = alte.empty() ? jahre.end()
                                      : std::find(jahre.begin(), jahre.end(),
                                                  alte[static_cast<std::size_t>(f_.tabJahre.selected())]);
    const int reiter = gezeigt == jahre.end() ? 1 : static_cast<int>(gezeigt - jahre.begin());
    f_.tabJahre.set_captions(jahre);
    f_.tabJahre.set_selected(reiter);
    if (!ansicht_.Anzeigemonat().empty()) Anzeigemonat_aus_Reitern();
}

// To a later year opens January, to an earlier one December.
void Hauptfenster::Jahr_gewechselt(int vorher) {
    if (d_.K().Setting(40) == 0) f_.tabMonate.set_selected(f_.tabJahre.selected() > vorher ? 0 : 11);
    Monat_wechseln();
}

bool Hauptfenster::Jahrestaste(int schritt) {
    if (f_.view()) f_.view()->focus(f_.tabMonate);
    const int monat = std::clamp(f_.tabMonate.selected() + schritt, 0, 11);
    if (monat == f_.tabMonate.selected()) return true;
    f_.tabMonate.set_selected(monat);
    Monat_wechseln();
    return true;
}

// --- other workstations ---------------------------------------------------------------------------------

void Hauptfenster::CheckErfassungsdaten() {
    d_.erfassung.Ausstehende_nachsehen();
    d_.log.nachsehen();
    // Somebody may have gone back to an earlier state of the whole folder, however old its files are: that
    // writes the configuration, whether it is watched or not, and perhaps leaves the month as it is.
    const bool geändert = d_.erfassung.Monat_geändert() || d_.konfig.Datei_ersetzt();
    if (!geändert && !d_.Neu_gelesen()) return; // a save may have read the configuration again
    if (geändert) d_.Vor_dem_Schreiben_auffrischen();
    const Eintragung::Auswahl auswahl = eintragung_.Auswahl_merken();
    const int oben = f_.msgFlexGrid.TopRow();
    Monat_wechseln();
    f_.msgFlexGrid.set_TopRow(oben);
    eintragung_.Auswahl_wiederherstellen(auswahl);
}

// Ten quick looks, then every tenth, then every hundredth tick: an idle workstation burdens the server
// little.
void Hauptfenster::Poll() {
    if (f_.view() && f_.view()->state() != WindowState::Normal &&
        f_.view()->state() != WindowState::Maximised)
        return;
    if (d_.app.active_form() != &f_ || !d_.app.windows().active(f_)) return;
    if (++Abfragezähler_ > ZÄHLER_HÖCHSTENS) Abfragezähler_ = 0;
    if (Abfragezähler_ % 10 != 0 && Abfragezähler_ > 10) return;
    if (Abfragezähler_ % 100 != 0 && Abfragezähler_ > 100) return;
    CheckErfassungsdaten();
}

// --- events ---------------------------------------------------------------------------------------------

void Hauptfenster::Ereignisse_verbinden() {
    f_.tabJahre.on_change = [this](int vorher) { Jahr_gewechselt(vorher); };
    f_.tabJahre.on_arrow = [this](int schritt) { return Jahrestaste(schritt); };
    f_.tabMonate.on_change = [this](int) { Monat_wechseln(); };
    f_.cmbMitarbeitergruppen.on_select = [this] {
        f_.msgFlexGrid.set_TopRow(1);
        d_.ini.wahl().Gruppenauswahl = f_.cmbMitarbeitergruppen.selected();
        ansicht_.Daten_anzeigen(false);
    };
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b)
        f_.cmdAuswahl(b)->on_click = [this, b](Modifiers) { eintragung_.Schaltfläche_gedrückt(b); };
    const auto beenden = [this] {
        if (schließen && schließen()) d_.app.windows().quit();
    };
    f_.cmdBeenden.on_click = [beenden](Modifiers) { beenden(); };
    f_.mnu(u"mnuBeenden").on_click = beenden;
    f_.mnu(u"mnuRecovery").on_click = [this] {
        if (Datenordner_wiederherstellen && Datenordner_wiederherstellen()) Neu_aufbauen();
    };
    f_.on_query_close = [this] { return !schließen || schließen(); };
    f_.on_key = [this](const Key& taste) { return Taste(taste); };
    f_.tmrTimer1.on_tick = [this] { Poll(); };
}

void Hauptfenster::Maus_verbinden() {
    Table& plan = f_.msgFlexGrid;
    plan.on_mouse_down = [this](const Table::Mouse& m) { Maus_gedrückt(m); };
    plan.on_mouse_up = [this](const Table::Mouse&) {
        if (Hervorhebung() == 1) Highlight_Off();
        Selection s = f_.msgFlexGrid.selection();
        if (f_.msgFlexGrid.HighLight() && s.col_sel == 0) {
            s.col_sel = 1; // a drag into the name column ends on day 1
            f_.msgFlexGrid.set_selection(s);
        }
    };
    plan.on_mouse_move = [this](int row, int col) { Maus_bewegt(row, col); };
    plan.on_mouse_left = [this] {
        f_.picKommentar.hide();
        if (Hervorhebung() >= 2) Highlight_Off();
        maus_war_draußen_ = true;
    };
    plan.on_mouse_entered = [this] {
        if (maus_war_draußen_) Abfragezähler_ = 0;
        maus_war_draußen_ = false;
    };
    plan.on_double_click = [this](int row, int col) {
        if (row >= 1 && col >= 1 && col <= ansicht_.Monatslänge() && row < f_.msgFlexGrid.rows())
            eintragung_.Arbeitsfrei_kennzeichnen(row, col);
    };
}

void Hauptfenster::Tabellen_verbinden() {
    Table& plan = f_.msgFlexGrid;
    plan.on_selection_changed = [this](int mausreihe) { f_.msgFlexGrid.set_HighLight(mausreihe >= 1); };
    plan.on_scrolled = [this] {
        if (!f_.msgFlexGrid.row_visible(f_.msgFlexGrid.selection().row)) eintragung_.Markierung_aufheben();
    };
    plan.accessible_name = [this](int row, int col) { return Zelle_vorlesen(row, col); };
    plan.tool_tip = [this](int row, int col) { return Zelle_erklären(row, col); };
    plan.comment = [this](int row, int col) { return ansicht_.Zellkommentar(row, col); };
    f_.msgFlexTaSu.accessible_name = [this](int row, int col) { return Summe_vorlesen(row, col); };
    f_.msgFlexKaWo.on_click = [this] { Markierung_und_Highlight_Off(); };
    f_.msgFlexTaSu.on_click = [this] { Markierung_und_Highlight_Off(); };
}

void Hauptfenster::Maus_gedrückt(const Table::Mouse& m) {
    f_.picKommentar.hide();
    if (m.row == 0) return Markierung_und_Highlight_Off();
    if (m.button == MouseButton::Right) {
        if (m.col == 0 || m.mods != Modifiers{} || f_.msgFlexGrid.HighLight()) return;
        f_.msgFlexGrid.set_selection({m.row, m.col, m.row, m.col});
        f_.msgFlexGrid.set_HighLight(true);
        return;
    }
    if (Hervorhebung() >= 2 && f_.msgFlexGrid.HighLight()) Highlight_On(m.row, m.col);
    if (Hervorhebung() == 0) Highlight_Off(); // of a search
    if (m.col != 0) return;
    if (Hervorhebung() == 1 && !ansicht_.Überschriftzeile(m.row)) Highlight_On(m.row, 0);
    eintragung_.Markierung_aufheben();
}

void Hauptfenster::Maus_bewegt(int row, int col) {
    if (Hervorhebung() < 2) return;
    if (row < 1 || row >= f_.msgFlexGrid.rows() || ansicht_.Überschriftzeile(row)) return Highlight_Off();
    Highlight_On(row, col);
}

// With choice 3 the day's column goes with the row.
void Hauptfenster::Highlight_On(int row, int col) {
    const bool spalte = Hervorhebung() == 3 && col >= 1 && col <= ansicht_.Monatslänge();
    f_.msgFlexGrid.set_highlight(row, spalte ? col : -1, d_.K().Grundfarben(7));
}

void Hauptfenster::Highlight_Off() {
    f_.msgFlexGrid.set_highlight(-1, -1, d_.K().Grundfarben(7));
}

void Hauptfenster::Markierung_und_Highlight_Off() {
    eintragung_.Markierung_aufheben();
    Highlight_Off(); // also that of a search, whatever the choice
}

void Hauptfenster::Fenster_merken() {
    if (!f_.view()) return;
    Fensterdaten& w = d_.ini.wahl().Fensterdaten_;
    w(fenster::ZUSTAND) = static_cast<int>(f_.view()->state());
    const Geometry g = f_.view()->geometry();
    w(fenster::LINKS) = g.left;
    w(fenster::OBEN) = g.top;
    w(fenster::BREITE) = g.width;
    w(fenster::HÖHE) = g.height;
}

} // namespace kalvora
