// What the main window offers to whom, and what its cells say in words.
#include "plan/hauptfenster.h"

namespace kalvora {

namespace {

constexpr int STANDARDBREITE = 1800, HÖCHSTBREITE = 2370; // twips of a reason button

// Entries whose windows are not there yet: shown where the role allows, but not to be chosen.
constexpr std::array KOMMENDE{u"mnuDatenordner_ändern",
                              u"mnuDatenexport",
                              u"mnuDatenimport",
                              u"mnuDrucken",
                              u"mnuMitarbeiter",
                              u"mnuAnzeigeberechtigungen",
                              u"mnuAnzeigegruppen",
                              u"mnuAnAbwesenheitsgründe",
                              u"mnuWochenende",
                              u"mnuFeiertage",
                              u"mnuAdministratoren",
                              u"mnuPrivilegierteBenutzer",
                              u"mnuEinstellungen",
                              u"mnuJahresübersicht",
                              u"mnuUrlaubsübersicht",
                              u"mnuRTTÜbersicht",
                              u"mnuSummenübersicht",
                              u"mnuLogbuch",
                              u"mnuHilfe",
                              u"mnuInfo"};

constexpr std::array NUR_ADMINISTRATOR{
    u"mnuDatenexport",           u"mnuDatenimport",          u"mnuRecovery",   u"mnuMitarbeiter",
    u"mnuAnzeigeberechtigungen", u"mnuAnAbwesenheitsgründe", u"mnuWochenende", u"mnuFeiertage",
    u"mnuAdministratoren",       u"mnuPrivilegierteBenutzer"};

constexpr std::array NICHT_IM_RÜCKBLICK{u"mnuDatenordner_ändern", u"mnuDatenexport", u"mnuDatenimport",
                                        u"mnuRecovery",           u"mnuBearbeiten",  u"mnuLogbuch"};

constexpr std::array<TextView, 7> WOCHENTAGE{u"Montag",  u"Dienstag", u"Mittwoch", u"Donnerstag",
                                             u"Freitag", u"Samstag",  u"Sonntag"};

TextView Rollenname(int rolle) {
    return rolle == 2 ? u"Administrator" : rolle == 1 ? u"Privilegierter Benutzer" : u"Mitarbeiter";
}

} // namespace

// In this order: a later rule can bring an entry back into view.
void Hauptfenster::Menüpunkte_aktivieren() {
    const Konfiguration& k = d_.K();
    const auto zeigen = [&](TextView name, bool an) { f_.mnu(name).set_visible(an); };
    for (const auto& eintrag : f_.menü)
        eintrag->set_visible(true);
    for (TextView name : KOMMENDE)
        f_.mnu(name).set_enabled(false);
    zeigen(u"mnuAnzeigegruppen", k.Setting(17) != 1);
    zeigen(u"mnuUrlaubsübersicht", k.settings.SettingStr(20, 4) != u"####");
    zeigen(u"mnuRTTÜbersicht", k.Setting(33) != 0);
    zeigen(u"mnuAnzeigeberechtigungen", k.Setting(18) != 1);
    zeigen(u"mnuPrivilegierteBenutzer", k.Setting(11) != 0);
    zeigen(u"mnuJahresübersicht", k.Benutzerrolle != 0 || d_.personal.Benutzer_eingetragen());
    for (TextView name : {u"mnuUrlaubsübersicht", u"mnuRTTÜbersicht", u"mnuSummenübersicht"})
        zeigen(name, !(k.Setting(19) == 1 && k.Benutzerrolle == 0));
    zeigen(u"mnuLogbuch", !(k.Setting(3) == 2 && k.Setting(28) == 1 && k.Benutzerrolle == 0));
    if (k.Benutzerrolle != 2)
        for (TextView name : NUR_ADMINISTRATOR)
            zeigen(name, false);
    if (d_.platz.Datenrückblick_aktiv)
        for (TextView name : NICHT_IM_RÜCKBLICK)
            zeigen(name, false);
    f_.tmrTimer1.set_enabled(k.Setting(32) != 1);
    eintragung_.Kopierpuffer_leeren();
}

void Hauptfenster::Schaltflächen_anordnen() {
    const Konfiguration& k = d_.K();
    const Fensterdaten& w = d_.ini.wahl().Fensterdaten_;
    const bool eigene_Breite = w(fenster::SF_BREITE_AN) == 1 && w(fenster::SF_BREITE) >= STANDARDBREITE &&
                               w(fenster::SF_BREITE) <= HÖCHSTBREITE;
    const int breite = eigene_Breite ? w(fenster::SF_BREITE) : k.SF_Breite > 0 ? k.SF_Breite : STANDARDBREITE;
    int gezeigt = 0;
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        Button& knopf = *f_.cmdAuswahl(b);
        bool sichtbar = b <= k.U();
        if (sichtbar) {
            const Schaltfläche& sf = k.SF(b);
            knopf.set_caption(sf.SF_Text);
            knopf.set_colours(b == k.U() ? 0x000000 : sf.SF_Schriftfarbe, sf.SF_Hintergrundfarbe);
            knopf.set_width(breite);
            sichtbar = !(sf.SF_Nur_Admin != 0 && k.Benutzerrolle == 0 && k.Setting(8) > 0);
        }
        knopf.set_visible(sichtbar);
        gezeigt += sichtbar ? 1 : 0;
    }
    const bool gesperrt = (k.Setting(10) == 1 || k.Setting(28) == 1) && k.Benutzerrolle == 0;
    if (gezeigt <= 1 || gesperrt) f_.cmdAuswahl(k.U())->set_visible(false);
}

void Hauptfenster::Tabellenfelder_anordnen() {
    f_.msgFlexKaWo.set_visible(d_.ini.wahl().Fensterdaten_(fenster::KALENDERWOCHEN) == 1);
    ansicht_.Tagessummen_initialisieren();
    if (f_.view()) f_.view()->arrange();
}

void Hauptfenster::Gruppen_anbieten() {
    std::vector<Text> namen;
    for (const Text& zeile : d_.Anzeigegruppen)
        namen.emplace_back(links(zeile, position(zeile, u"|") - 1));
    int& wahl = d_.ini.wahl().Gruppenauswahl;
    if (wahl >= static_cast<int>(namen.size())) wahl = 0;
    f_.cmbMitarbeitergruppen.set_visible(namen.size() > 1 && d_.Anzeigegruppen_vorhanden());
    f_.cmbMitarbeitergruppen.set_items(std::move(namen));
    f_.cmbMitarbeitergruppen.set_selected(wahl);
}

void Hauptfenster::Statuszeile() {
    f_.lblStatus1.set_text(u"Datenordner: " + d_.platz.Datenpfad);
    f_.lblStatus2.set_text(u"Benutzer: " + d_.platz.Benutzername + u" (" +
                           Text(Rollenname(d_.K().Benutzerrolle)) + u")");
    f_.lblStatus3.set_text(ansicht_.Anzeigemonat().empty()
                               ? Text()
                               : u"Stand: " + FormatZeit(d_.kanal.werk().uhr().now()) + u" Uhr");
}

Text Hauptfenster::Tag_in_Worten(int tag) const {
    const Datum datum = FormatDatumSD(ansicht_.Anzeigemonat() + ziffern(tag, 2));
    return Text(WOCHENTAGE[static_cast<std::size_t>(Wochentag(datum) - 1)]) + u" " + ziffern(tag) + u". " +
           d_.platz.gebiet.Monatsnamen[static_cast<std::size_t>(Kalendertag_aus(datum).monat - 1)];
}

// "Mittwoch 4. November, Urlaub: 3"
Text Hauptfenster::Summe_vorlesen(int row, int tag) const {
    const Text summe = f_.msgFlexTaSu.cell(row, tag).text;
    if (row < 1 || tag < 1 || tag > ansicht_.Monatslänge()) return summe;
    return Tag_in_Worten(tag) + u", " + f_.msgFlexTaSu.cell(row, 0).text + u": " +
           (summe.empty() ? Text(u"0") : summe);
}

Text Hauptfenster::Zelle_vorlesen(int row, int tag) const {
    const Table& plan = f_.msgFlexGrid;
    if (tag == 0) return plan.cell(row, 0).text;
    if (tag > ansicht_.Monatslänge()) return {};
    Text worte = Tag_in_Worten(tag);
    const Cell& zelle = plan.cell(row, tag);
    const int b = zelle.code == u' ' ? 0 : d_.K().SFDec(zelle.code);
    if (row >= 1 && zelle.text == Text(1, FESTES_LEERZEICHEN))
        worte += u", arbeitsfrei";
    else if (row >= 1 && b >= 1 && b < d_.K().U() && !trimmen(zelle.text).empty())
        worte += u", " + d_.K().SF(b).SF_Text;
    const Text feiertag = ansicht_.Feiertag_Name(tag);
    if (!feiertag.empty())
        worte += u", " + feiertag;
    else if (ansicht_.Wochenende(tag))
        worte += u", arbeitsfreier Tag";
    if (d_.ferien.Ferientag(tag)) worte += u", Schulferien";
    if (row >= 1 && !ansicht_.Zellkommentar(row, tag).empty())
        worte += u", Kommentar: " + ansicht_.Zellkommentar(row, tag);
    return worte;
}

// Of a heading cell the holiday's name, of an entry the reason and the comment.
Text Hauptfenster::Zelle_erklären(int row, int tag) const {
    if (tag < 1 || tag > ansicht_.Monatslänge()) return {};
    const Cell& zelle = f_.msgFlexGrid.cell(row, tag);
    if (row == 0) {
        const Text feiertag = ansicht_.Feiertag_Name(tag);
        const bool beides = !feiertag.empty() && d_.ferien.Ferientag(tag);
        return feiertag + (beides ? u"\n" : u"") + (d_.ferien.Ferientag(tag) ? u"Schulferien" : u"");
    }
    const bool frei = zelle.text == Text(1, FESTES_LEERZEICHEN);
    const int b = zelle.code == u' ' || trimmen(zelle.text).empty() ? 0 : d_.K().SFDec(zelle.code);
    if (!frei && (b < 1 || b >= d_.K().U())) return {};
    const Text kommentar = ansicht_.Zellkommentar(row, tag);
    return (frei ? Text(u"Arbeitsfreier Tag") : d_.K().SF(b).SF_Text) +
           (kommentar.empty() ? Text() : u"\n" + kommentar);
}

} // namespace kalvora
