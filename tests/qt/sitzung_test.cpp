// Whole sessions of the program in its windows, through mouse and keys: the made-up company of 16 November
// 2026 on a disk in memory.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QPushButton>
#include <QTabBar>
#include <chrono>

#include "hilfen/programmlauf.h"
#include "hilfen/tor.h"
#include "platform/waiting_filesystem.h"
#include "qt/testfenster.h"

namespace kalvora {
namespace {

struct Sitzung : testing::Test {
    SpeicherDateisystem fs;
    WaitingFileSystem wartend{fs};
    TestUhr uhr;
    TestUmgebung umgebung;
    QtFenstersystem system;
    std::unique_ptr<Programm> programm;
    int anna = 0; // her row

    void SetUp() override {
        Firma().anlegen(fs, u"/srv/firma/Data/");
        for (const TextView ordner : {u"/run/muster/kalvora/", u"/home/muster/.local/share/"})
            fs.platte().mache_ordner(Text(ordner));
        umgebung.variablen[u"USERNAME"] = u"chef";
        const std::vector<Text> aufruf{u"/path", u"/srv/firma", u"/nowelcomescreen"};
        programm = std::make_unique<Programm>(Plattform{wartend, uhr, umgebung}, system, aufruf);
        wartend.while_waiting = [this](double sekunden) { programm->app().Warten_zeigen(sekunden); };
        wartend.wait_over = [this] { programm->app().Warten_vorbei(); };
        ASSERT_TRUE(programm->starten());
        fenster().resize(1200, 700);
        system.process_events();
        system.process_events();
        anna = programm->hauptfenster().ansicht().Zeile_zu_BenId(u"anna");
    }
    frmKalvora& f() { return programm->hauptfenster().form(); }
    Table& tab() { return f().msgFlexGrid; }
    QWidget& fenster() { return *system.window(f()); }
    PlanAnsicht& plan() { return *w<PlanAnsicht>("msgFlexGrid"); }
    template <class W>
    W* w(const char* name) {
        return fenster().findChild<W*>(QLatin1String(name));
    }
    void klick(const char* name) { QTest::mouseClick(w<QPushButton>(name), Qt::LeftButton); }
    void markiere(int von, int bis) {
        ziehe(plan(), {plan().cell_rect(anna, von).center(), plan().cell_rect(anna, bis).center()});
    }
    QString Ansage(int tag) {
        return QAccessible::queryAccessibleInterface(&plan())->tableInterface()->cellAt(anna, tag)->text(
            QAccessible::Name);
    }
    // How often the month's file of today has this row.
    std::ptrdiff_t zahl(const Text& zeile) {
        const auto zeilen = als_Zeilen(fs.inhalt(u"/srv/firma/Data/2611 261116 Data.dat").value_or(""));
        return std::count(zeilen.begin(), zeilen.end(), zeile);
    }
};

} // namespace

TEST_F(Sitzung, Drei_Tage_markieren_Grund_druecken_und_wieder_loeschen) {
    markiere(24, 26);
    klick("cmdAuswahl_1");
    EXPECT_EQ(zahl(A(u"anna", Text(23, u' ') + u"111")), 1);
    EXPECT_EQ(Ansage(25), QStringLiteral("Mittwoch 25. November, Urlaub"));
    plan().setFocus();
    tab().set_selection({anna, 24, anna, 24});
    tab().set_HighLight(true);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(&plan(), Qt::Key_Right, Qt::ShiftModifier);
    klick("cmdAuswahl_7");
    EXPECT_EQ(zahl(A(u"anna", u"")), 1) << "a new row says that the days are free again";
    EXPECT_EQ(Ansage(25), QStringLiteral("Mittwoch 25. November"));
}

TEST_F(Sitzung, Haengt_die_Platte_antwortet_das_Fenster_und_es_bleibt_bei_einem_Satz) {
    markiere(20, 20);
    klick("cmdAuswahl_1"); // today's version of the month stands: the next row is appended
    markiere(24, 25);
    const Text nachher = A(u"anna", Text(19, u' ') + u"1   11");
    Tor tor;
    std::chrono::steady_clock::time_point angekommen;
    bool besucht = false;
    const auto inzwischen = [&] {
        besucht = true;
        const std::chrono::duration<double> Antwortzeit = std::chrono::steady_clock::now() - angekommen;
        EXPECT_LT(Antwortzeit.count(), 1.0) << "0.1 s on a machine that has nothing else to do";
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        klick("cmdAuswahl_1");
        klick("cmdAuswahl_2");
        QTest::keyClick(&plan(), Qt::Key_F5);
        auto* monate = w<QTabBar>("tabMonate");
        QTest::mouseClick(monate, Qt::LeftButton, {}, monate->tabRect(3).center());
        fenster().close();
        EXPECT_TRUE(fenster().isVisible());
        EXPECT_EQ(f().tabMonate.selected(), 10);
        EXPECT_EQ(zahl(nachher), 0);
        tor.öffnen();
    };
    tor.bei_Ankunft = [&] {
        angekommen = std::chrono::steady_clock::now();
        QMetaObject::invokeMethod(&fenster(), inzwischen, Qt::QueuedConnection);
    };
    fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "write" && passt_auf_Maske(pfad, u"*Data.dat")) tor.warten();
    };
    klick("cmdAuswahl_1");
    EXPECT_TRUE(besucht);
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_EQ(zahl(nachher), 1);
    EXPECT_FALSE(tab().cell(anna, 24).text.empty());
    EXPECT_TRUE(f().user_key({u"F5", {}})) << "events reach logic again";
}

} // namespace kalvora
