#include "qt/testfenster.h"

#include <QCoreApplication>

#include "base/datum.h"

namespace kalvora {

namespace {

void fülle_Plan(frmKalvora& form, int personen) {
    Table& plan = form.msgFlexGrid;
    const Table::Zeichenpause pause(plan);
    plan.clear();
    plan.resize(1, 33);
    plan.set_col_width(32, 0);
    plan.edit(0, 0).text = u"Name";
    for (int tag = 1; tag <= 30; ++tag) {
        const int wochentag = Wochentag(Datum_aus(2026, 11, tag));
        plan.edit(0, tag).text = Text(Wochentag_kurz(wochentag)) + u"\r" + ziffern(tag);
        plan.set_group_begins(tag, wochentag == 1);
    }
    for (int i = 0; i < personen; ++i) {
        const int row = plan.rows(), neue = i % 11 == 0 ? 1 : 0; // department
        plan.resize(row + 1 + neue, 33);
        if (neue == 1) {
            plan.edit(row, 0).text = u"Abteilung " + ziffern(i / 11);
            plan.set_row_kind(row, RowKind::Heading);
        }
        plan.edit(row + neue, 0).text = u"Person, Nummer " + ziffern(i + 1);
        for (int tag = 1 + i % 7; tag <= 30; tag += 7)
            plan.edit(row + neue, tag) = {u"U", 0x000000, 0x80FF80, u'1', false};
    }
    plan.set_marked_col(18);
}

} // namespace

Testfenster::Testfenster(int personen, QSize größe) {
    fülle_Plan(form, personen);
    form.msgFlexKaWo.resize(1, 33);
    form.msgFlexKaWo.set_merged(true);
    for (int tag = 1; tag <= 32; ++tag)
        form.msgFlexKaWo.edit(0, tag).text = ziffern(Kalenderwoche(Datum_aus(2026, 11, tag))) + u". KW";
    form.tabJahre.set_captions({u"2025", u"2026", u"2027"});
    form.tabMonate.set_captions({u"Januar", u"Febr.", u"März", u"April", u"Mai", u"Juni", u"Juli", u"August",
                                 u"Sept.", u"Okt.", u"Nov.", u"Dez."});
    form.tabMonate.set_selected(10);
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        form.cmdAuswahl(b)->set_visible(b <= 6);
        form.cmdAuswahl(b)->set_caption(u"Grund " + ziffern(b));
    }
    form.lblStatus1.set_text(u"Datenordner: /srv/abteilungen/personal/planung/Kalvora/Data");
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
