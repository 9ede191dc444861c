#include "qt/testfenster.h"

#include <QCoreApplication>

#include "base/datum.h"

namespace kalvora {

namespace {

constexpr Farbe WOCHENENDE = 0xE8E8E8, FEIERTAG = 0xC0C0FF, NAMEN = 0xFFF8F4, ÜBERSCHRIFT = 0xFFE8CE,
                LINIEN = 0xAFAFAF, HEUTE = 0xE8FFFF, FERIEN = 0x9AE6FF;

struct Grund {
    TextView text, buchstabe;
    Farbe farbe;
};
constexpr std::array GRÜNDE{
    Grund{u"Urlaub", u"U", 0x80FF80},      Grund{u"Zeitausgleich", u"Z", 0x80C0FF},
    Grund{u"Dienstreise", u"D", 0x80FFFF}, Grund{u"Krank", u"K", 0x8F8FFF},
    Grund{u"Sonstiges", u"S", 0xFFFF80},   Grund{u"Eintrag löschen", u"", 0xFFFFFF},
};
constexpr std::array<TextView, 12> NACHNAMEN{
    u"Albrecht", u"Brandstätter",        u"Çelik",   u"Dörfler", u"Eichinger",  u"Fürst",
    u"Großmann", u"Hölderle-Zimmermann", u"Ivanova", u"Jäger",   u"Köstlmeier", u"Lindqvist"};
constexpr std::array<TextView, 7> VORNAMEN{u"Anna", u"Bülent", u"Clara", u"Dieter", u"Elisabeth Charlotte",
                                           u"Finn", u"Greta"};
constexpr std::array<TextView, 4> ABTEILUNGEN{u"Geschäftsführung", u"Vertrieb Süd",
                                              u"Entwicklung und Konstruktion", u"Werkstatt"};

bool ist_Wochenende(int tag) {
    return Wochentag(Datum_aus(2026, 11, tag)) > 5;
}

void Kopfzeile(Table& plan) {
    plan.edit(0, 0).text = u"Name";
    for (int tag = 1; tag <= 30; ++tag) {
        Cell& cell = plan.edit(0, tag);
        cell.text = Text(Wochentag_kurz(Wochentag(Datum_aus(2026, 11, tag)))) + u"\r" + ziffern(tag);
        if (tag <= 6) cell.back = FERIEN;
    }
}

void Überschrift(Table& plan, int row, TextView text) {
    for (int col = 0; col <= 31; ++col)
        plan.edit(row, col).back = ÜBERSCHRIFT;
    plan.edit(row, 0).text = text;
}

void Eintrag(Cell& cell, const Grund& grund) {
    cell.text = grund.buchstabe;
    cell.back = grund.farbe;
}

void Person(Table& plan, int row, int nummer) {
    const auto n = static_cast<std::size_t>(nummer);
    plan.edit(row, 0).text = Text(NACHNAMEN[n % 12]) + u", " + Text(VORNAMEN[n % 7]);
    plan.edit(row, 0).back = NAMEN;
    plan.edit(row, 32).text = u"b" + ziffern(nummer);
    for (int tag = 1; tag <= 30; ++tag) {
        Cell& cell = plan.edit(row, tag);
        const int lage = (tag + nummer * 7) % 29;
        if (lage < 5 && nummer % 3 != 2 && !ist_Wochenende(tag))
            Eintrag(cell, GRÜNDE[n % 5]);
        else if (lage == 20 && nummer % 4 == 1 && !ist_Wochenende(tag))
            Eintrag(cell, GRÜNDE[(n + 2) % 5]);
        else if (lage == 11 && nummer % 5 == 0) {
            cell.text = FESTES_LEERZEICHEN;
            cell.back = WOCHENENDE;
        }
        cell.bold = !cell.text.empty() && lage == 2;
        if (cell.text.empty()) cell.back = tag == 11 ? FEIERTAG : ist_Wochenende(tag) ? WOCHENENDE : 0xFFFFFF;
    }
}

void Wochenzeile(Table& wochen) {
    wochen.resize(1, 33);
    wochen.set_merged(true);
    for (int tag = 2; tag <= 30; ++tag)
        wochen.edit(0, tag).text = ziffern(Kalenderwoche(Datum_aus(2026, 11, tag))) + u". KW";
    wochen.edit(0, 1).text = u" ";
    wochen.edit(0, 31).text = wochen.edit(0, 32).text = wochen.cell(0, 30).text;
}

void Summen(frmKalvora& form) {
    Table& summen = form.msgFlexTaSu;
    summen.resize(6, 32);
    summen.set_row_height(0, 0);
    summen.set_grid_colour(LINIEN);
    for (int b = 1; b <= 5; ++b) {
        const Grund& grund = GRÜNDE[static_cast<std::size_t>(b - 1)];
        summen.edit(b, 0).text = grund.text;
        summen.edit(b, 0).back = grund.farbe;
        for (int tag = 1; tag <= 30; ++tag) {
            int anzahl = 0;
            for (int row = 1; row < form.msgFlexGrid.rows(); ++row)
                anzahl += form.msgFlexGrid.cell(row, tag).text == grund.buchstabe;
            if (anzahl > 0) summen.edit(b, tag).text = ziffern(anzahl);
            summen.edit(b, tag).back = tag == 11 ? FEIERTAG : ist_Wochenende(tag) ? WOCHENENDE : 0xFFFFFF;
        }
    }
}

void Rest(frmKalvora& form) {
    form.set_title(u"Kalvora - Musterbau GmbH & Co. KG");
    form.tabJahre.set_captions({u"2025", u"2026", u"2027"});
    form.tabJahre.set_selected(1);
    form.tabMonate.set_captions({u"Januar", u"Febr.", u"März", u"April", u"Mai", u"Juni", u"Juli", u"August",
                                 u"Sept.", u"Okt.", u"Nov.", u"Dez."});
    form.tabMonate.set_selected(10);
    form.cmbMitarbeitergruppen.set_items({u"Alle", u"Verwaltung", u"Werk Nord"});
    form.cmbMitarbeitergruppen.set_selected(0);
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        Button& knopf = *form.cmdAuswahl(b);
        knopf.set_visible(b <= 6);
        if (b > 6) continue;
        knopf.set_caption(Text(GRÜNDE[static_cast<std::size_t>(b - 1)].text));
        knopf.set_colours(0x000000, GRÜNDE[static_cast<std::size_t>(b - 1)].farbe);
    }
    form.lblStatus1.set_text(u"Datenordner: /srv/abteilungen/personal/planung/Kalvora/Data");
    form.lblStatus2.set_text(u"b7 (Administrator)");
    form.lblStatus3.set_text(u"Stand 09:41:07");
    form.mnu(u"mnuLogbuch").set_enabled(false);
}

} // namespace

void fülle_Plan(frmKalvora& form, int personen, int heute) {
    Table& plan = form.msgFlexGrid;
    plan.set_redraw(false);
    plan.clear();
    plan.resize(1, 33);
    plan.set_col_width(32, 0);
    Kopfzeile(plan);
    for (int i = 0; i < personen; ++i) {
        const int row = plan.rows();
        const bool neue_Abteilung = i % 11 == 0;
        plan.resize(row + (neue_Abteilung ? 2 : 1), 33);
        if (neue_Abteilung) Überschrift(plan, row, ABTEILUNGEN[static_cast<std::size_t>(i / 11) % 4]);
        Person(plan, plan.rows() - 1, i + 1);
    }
    plan.edit(0, heute).back = HEUTE;
    for (int row = 1; row < plan.rows(); ++row)
        if (Cell& cell = plan.edit(row, heute); cell.text.empty() && cell.back == 0xFFFFFF) cell.back = HEUTE;
    plan.set_marked_col(heute);
    plan.set_redraw(true);
}

Testfenster::Testfenster(int personen, QSize größe) {
    fülle_Plan(form, personen);
    Wochenzeile(form.msgFlexKaWo);
    Summen(form);
    Rest(form);
    app.open(form);
    fenster().resize(größe);
    zeigen();
}

Testfenster::~Testfenster() {
    app.close(form);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Testfenster::zeigen() {
    system.process_events();
    system.process_events();
}

} // namespace kalvora
