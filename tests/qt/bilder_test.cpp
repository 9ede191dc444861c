// Pictures of the windows: what must be told apart at a glance is painted differently. With KALVORA_BILDER
// set to a folder they are kept there, for looking at.
#include <gtest/gtest.h>

#include <QDir>
#include <QLabel>
#include <QScrollBar>

#include "frame/frm_start.h"
#include "qt/testfenster.h"

namespace kalvora {

namespace {

void sichern(QWidget& fenster, const char* name) {
    const QString ordner = qEnvironmentVariable("KALVORA_BILDER");
    if (!ordner.isEmpty()) fenster.grab().save(QDir(ordner).filePath(QLatin1String(name)));
}

// One image pixel for each logical one, whatever the scale factor.
QImage Bild(QWidget& widget) {
    QImage bild = widget.grab().toImage().scaled(widget.size());
    bild.setDevicePixelRatio(1);
    return bild;
}

} // namespace

TEST(Bilder, Arten_von_Tagen_sind_zu_unterscheiden) {
    Testfenster t;
    Table& plan = t.form.msgFlexGrid;
    // All in a row of its own and on days of one kind of column, so that only the cell itself can differ.
    const int row = 5;
    for (int tag = 23; tag <= 30; ++tag)
        plan.edit(row, tag) = Cell{};
    plan.edit(row, 24).back = 0xE8E8E8;           // weekend
    plan.edit(row, 25).back = 0xC0C0FF;           // holiday
    plan.edit(row, 26).text = FESTES_LEERZEICHEN; // a free day
    plan.edit(row, 26).back = 0xE8E8E8;
    plan.edit(row, 27) = Cell{u"U", 0x000000, 0x80FF80, u'1', false}; // an entry
    plan.edit(row, 28) = Cell{u"U", 0x000000, 0x80FF80, u'1', true};  // the same with a comment
    t.zeigen();
    const QImage bild = Bild(*t.plan().viewport());
    std::vector<QImage> tage;
    for (int tag = 23; tag <= 28; ++tag)
        tage.push_back(bild.copy(t.plan().cell_rect(row, tag).adjusted(1, 1, -2, -2)).scaled(20, 16));
    for (std::size_t a = 0; a < tage.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            EXPECT_NE(tage[a], tage[b]) << "day " << 23 + a << " looks like day " << 23 + b;
    // Today is framed: its left edge has a colour that no other day's left edge has.
    const QRect heute = t.plan().cell_rect(row, 18), sonst = t.plan().cell_rect(row, 19);
    EXPECT_NE(bild.pixelColor(heute.left() - 1, heute.center().y()),
              bild.pixelColor(sonst.right() + 1, sonst.center().y()));
    sichern(t.fenster(), "tage.png");
}

TEST(Bilder, Markierung_ist_zu_sehen_und_nur_mit_HighLight) {
    Testfenster t;
    Table& plan = t.form.msgFlexGrid;
    plan.set_selection({4, 9, 6, 13});
    t.zeigen();
    const QImage ohne = Bild(*t.plan().viewport());
    plan.set_HighLight(true);
    t.zeigen();
    const QImage mit = Bild(*t.plan().viewport());
    for (const auto& [row, col] : {std::pair{4, 9}, {5, 11}, {6, 13}})
        EXPECT_NE(ohne.pixelColor(t.Mitte(row, col)), mit.pixelColor(t.Mitte(row, col))) << row << "/" << col;
    for (const auto& [row, col] : {std::pair{3, 10}, {7, 10}, {5, 8}, {5, 14}})
        EXPECT_EQ(ohne.copy(t.plan().cell_rect(row, col)), mit.copy(t.plan().cell_rect(row, col)))
            << row << "/" << col;
    sichern(t.fenster(), "markierung.png");
}

TEST(Bilder, Viele_Gruende_laufen_um_ohne_sich_zu_ueberdecken) {
    Testfenster t(60, {1024, 680});
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        t.form.cmdAuswahl(b)->set_caption(b % 4 == 0 ? u"Fortbildung und Lehrgänge" : u"Grund " + ziffern(b));
        t.form.cmdAuswahl(b)->set_visible(b != 7);
    }
    t.form.picKommentar.show(u"Zahnarzt am Vormittag, danach im Büro", 4, 20);
    t.zeigen();
    std::vector<QRect> plätze;
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        auto* knopf = t.fenster().findChild<QWidget*>(QStringLiteral("cmdAuswahl_%1").arg(b));
        EXPECT_EQ(knopf->isVisible(), b != 7);
        if (b == 7) continue;
        const QRect r(knopf->mapTo(&t.fenster(), QPoint()), knopf->size());
        EXPECT_TRUE(t.fenster().rect().contains(r)) << b;
        EXPECT_GE(r.width(),
                  knopf->fontMetrics().horizontalAdvance(QStringLiteral("Fortbildung und Lehrgänge")) *
                      (b % 4 == 0))
            << b;
        for (const QRect& anderer : plätze)
            EXPECT_FALSE(r.intersects(anderer)) << b;
        plätze.push_back(r);
    }
    const auto* kommentar = t.fenster().findChild<QLabel*>(QStringLiteral("lblKommentar"));
    EXPECT_TRUE(kommentar->isVisible());
    EXPECT_EQ(kommentar->text(), QStringLiteral("Zahnarzt am Vormittag, danach im Büro"));
    EXPECT_GE(kommentar->height(), kommentar->heightForWidth(kommentar->width())) << "the whole text is seen";
    sichern(t.fenster(), "gruende.png");
}

TEST(Bilder, Schmales_Fenster_behaelt_Namen_und_Koepfe) {
    Testfenster t(40, {700, 520});
    PlanAnsicht &plan = t.plan(), &summen = t.tabelle("msgFlexTaSu"), &wochen = t.tabelle("msgFlexKaWo");
    plan.horizontalScrollBar()->setValue(plan.horizontalScrollBar()->maximum());
    plan.verticalScrollBar()->setValue(7);
    t.zeigen();
    EXPECT_EQ(plan.cell_rect(9, 0).left(), 0);
    EXPECT_EQ(plan.cell_rect(0, 30).top(), 0);
    EXPECT_TRUE(plan.body_rect().contains(plan.cell_rect(9, 30)));
    for (const int tag : {20, 30}) {
        EXPECT_EQ(plan.cell_rect(9, tag).left(), summen.cell_rect(1, tag).left());
        EXPECT_EQ(plan.cell_rect(9, tag).left(), wochen.cell_rect(0, tag).left());
    }
    sichern(t.fenster(), "schmal.png");
}

TEST(Bilder, Startbild) {
    QtFenstersystem system;
    Application app{system};
    frmStart start{app, u"1.16.1"};
    app.open(start);
    QWidget& fenster = *system.window(start);
    EXPECT_TRUE(fenster.isVisible()) << "shown before the program goes on";
    EXPECT_TRUE(fenster.windowFlags().testFlag(Qt::FramelessWindowHint));
    sichern(fenster, "start.png");
    start.lblText3.set_visible(false);
    start.lblText4.set_visible(true);
    start.lblText4.set_text(u"Auf den Datenordner wird gewartet ... 12 Sekunden");
    start.cmdAuswahl1.set_visible(true);
    start.cmdAuswahl2.set_visible(true);
    system.process_events();
    for (const char* name : {"cmdAuswahl_1", "cmdAuswahl_2", "lblText_4"}) {
        const auto* w = fenster.findChild<QWidget*>(QLatin1String(name));
        EXPECT_TRUE(fenster.rect().contains(QRect(w->mapTo(&fenster, QPoint()), w->size()))) << name;
    }
    sichern(fenster, "warten.png");
    app.close(start);
}

} // namespace kalvora
