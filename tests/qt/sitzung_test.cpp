// Whole sessions of the program in its windows, through mouse and keys: a made-up company of 16 November 2026
// on a disk in memory, and the first run on an empty folder of the real file system.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <QTabBar>
#include <chrono>
#include <fstream>
#include <stdexcept>

#include "firma/firma.h"
#include "frame/programm.h"
#include "hilfen/arbeitsplatz.h"
#include "hilfen/temp_ordner.h"
#include "hilfen/test_umgebung.h"
#include "hilfen/tor.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/waiting_filesystem.h"
#include "qt/eingabe.h"
#include "ui/qt/fenstersystem.h"
#include "ui/qt/qt_text.h"

namespace kalvora {
namespace {

std::shared_ptr<SpeicherPlatte> Firma() {
    auto platte = std::make_shared<SpeicherPlatte>();
    SpeicherDateisystem fs(platte);
    TestUhr uhr;
    Firmenwunsch wunsch;
    wunsch.Zielordner = u"/srv/firma";
    wunsch.Mitarbeiter = 30;
    wunsch.Saat = 7;
    wunsch.Heute = Datum_aus(2026, 11, 16);
    wunsch.Benutzername = u"chef";
    wunsch.Feiertagsregeln = {u"1:25.12.:Weihnachten"};
    Firma_erzeugen(fs, uhr, wunsch);
    platte->mache_ordner(u"/run/muster/kalvora/");
    platte->mache_ordner(u"/home/muster/.local/share/");
    return platte;
}

struct Umgebung : TestUmgebung {
    Umgebung() { variablen[u"USERNAME"] = u"chef"; }
    std::function<void()> beim_Gebietsschema; // the splash window stands by then
    Locale locale() override {
        if (beim_Gebietsschema) beim_Gebietsschema();
        return schema;
    }
};

// One run of the program; the windows are Qt's unless others are given.
template <class Fenster = QtFenstersystem>
struct Lauf {
    explicit Lauf(std::shared_ptr<SpeicherPlatte> platte, Text rechner = u"PLATZ1",
                  bool mit_Startbild = false)
        : fs(std::move(platte)),
          programm({wartend, uhr, umgebung}, fenster,
                   mit_Startbild ? std::vector<Text>{u"/path", u"/srv/firma"}
                                 : std::vector<Text>{u"/path", u"/srv/firma", u"/nowelcomescreen"}) {
        umgebung.rechner = std::move(rechner);
        wartend.while_waiting = [this](double sekunden) { programm.app().Warten_zeigen(sekunden); };
        wartend.wait_over = [this] { programm.app().Warten_vorbei(); };
    }
    frmKalvora& f() { return programm.hauptfenster().form(); }
    Table& tab() { return f().msgFlexGrid; }
    // A person's row whose days are free, by the plan.
    int freie_Zeile(int von, int bis) {
        for (int row = 1; row < tab().rows(); ++row) {
            bool frei = !tab().cell(row, SPALTE_BENID).text.empty();
            for (int tag = von; tag <= bis; ++tag)
                frei = frei && tab().cell(row, tag).text.empty();
            if (frei) return row;
        }
        return 0;
    }
    // How often the month's files have this row.
    std::ptrdiff_t zahl(const Text& zeile) {
        std::ptrdiff_t n = 0;
        for (const auto& [pfad, bytes] : fs.platte().abbild())
            if (passt_auf_Maske(pfad, u"/srv/firma/Data/2611*Data.dat")) {
                const auto zeilen = als_Zeilen(bytes);
                n += std::count(zeilen.begin(), zeilen.end(), zeile);
            }
        return n;
    }

    SpeicherDateisystem fs;
    WaitingFileSystem wartend{fs};
    TestUhr uhr;
    Umgebung umgebung;
    Fenster fenster;
    Programm programm;
};

struct Sitzung : testing::Test {
    std::shared_ptr<SpeicherPlatte> platte = Firma();
    Lauf<> l{platte};

    void SetUp() override {
        ASSERT_TRUE(l.programm.starten());
        fenster().resize(1200, 700);
        l.fenster.process_events();
        l.fenster.process_events();
    }
    QWidget& fenster() { return *l.fenster.window(l.f()); }
    PlanAnsicht& plan() { return *w<PlanAnsicht>("msgFlexGrid"); }
    template <class W>
    W* w(const char* name) {
        return fenster().findChild<W*>(QLatin1String(name));
    }
    void klick(const char* name) { QTest::mouseClick(w<QPushButton>(name), Qt::LeftButton); }
    void reiter(const char* name, int tab) {
        QTest::mouseClick(w<QTabBar>(name), Qt::LeftButton, {}, w<QTabBar>(name)->tabRect(tab).center());
        l.fenster.process_events();
    }
    void markiere(int row, int von, int bis) {
        ASSERT_GT(row, 0);
        ASSERT_TRUE(plan().row_visible(row));
        ziehe(plan(), {plan().cell_rect(row, von).center(), plan().cell_rect(row, bis).center()});
    }
    QString Ansage(int row, int tag) {
        return QAccessible::queryAccessibleInterface(&plan())->tableInterface()->cellAt(row, tag)->text(
            QAccessible::Name);
    }
    // The row's record once the days bear reason 1.
    Text Satz(int row, int von, int bis) {
        Text satz = u"A:" + l.tab().cell(row, SPALTE_BENID).text + u":";
        for (int tag = 1; tag <= 31; ++tag)
            satz += tag >= von && tag <= bis ? l.programm.daten().K().SFHex(1) : l.tab().cell(row, tag).code;
        return satz;
    }
};

} // namespace

TEST_F(Sitzung, Drei_Tage_markieren_Grund_druecken_und_wieder_loeschen) {
    const int row = l.freie_Zeile(24, 26);
    markiere(row, 24, 26);
    EXPECT_EQ(l.tab().selection(), (Selection{row, 24, row, 26}));
    EXPECT_TRUE(l.tab().HighLight());
    const Text vorher = Satz(row, 0, 0), nachher = Satz(row, 24, 26),
               grund = l.programm.daten().K().SF(1).SF_Text;
    EXPECT_EQ(l.zahl(nachher), 0);
    klick("cmdAuswahl_1");
    EXPECT_EQ(l.zahl(nachher), 1);
    EXPECT_FALSE(l.tab().HighLight());
    EXPECT_EQ(Ansage(row, 25), QStringLiteral("Mittwoch 25. November, ") + qt(grund));
    const auto frühere = l.zahl(vorher);
    plan().setFocus();
    l.tab().set_selection({row, 24, row, 24});
    l.tab().set_HighLight(true);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(&plan(), Qt::Key_Right, Qt::ShiftModifier);
    klick(("cmdAuswahl_" + std::to_string(l.programm.daten().K().U())).c_str());
    EXPECT_EQ(l.zahl(vorher), frühere + 1) << "a new row says that the days are free again";
    EXPECT_EQ(Ansage(row, 25), QStringLiteral("Mittwoch 25. November"));
}

TEST_F(Sitzung, Haengt_die_Platte_antwortet_das_Fenster_und_es_bleibt_bei_einem_Satz) {
    const int row = l.freie_Zeile(20, 25);
    markiere(row, 20, 20);
    klick("cmdAuswahl_1"); // today's version of the month stands: the next row is appended
    markiere(row, 24, 25);
    const Text nachher = Satz(row, 24, 25);
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
        reiter("tabMonate", 3);
        fenster().close();
        EXPECT_TRUE(fenster().isVisible());
        EXPECT_EQ(l.f().tabMonate.selected(), 10);
        EXPECT_EQ(l.zahl(nachher), 0);
        tor.öffnen();
    };
    tor.bei_Ankunft = [&] {
        angekommen = std::chrono::steady_clock::now();
        QMetaObject::invokeMethod(&fenster(), inzwischen, Qt::QueuedConnection);
    };
    l.fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "write" && passt_auf_Maske(pfad, u"*Data.dat")) tor.warten();
    };
    klick("cmdAuswahl_1");
    EXPECT_TRUE(besucht);
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_EQ(l.zahl(nachher), 1);
    EXPECT_FALSE(l.tab().cell(row, 24).text.empty());
    EXPECT_TRUE(l.f().user_key({u"F5", {}})) << "events reach logic again";
    EXPECT_EQ(l.zahl(nachher), 1);
}

TEST_F(Sitzung, F5_und_Reiter_zeigen_den_Stand_der_Platte) {
    Lauf<StummeFenster> anderer(platte, u"PLATZ2");
    ASSERT_TRUE(anderer.programm.starten());
    const int row = l.freie_Zeile(24, 26);
    anderer.tab().user_select({row, 24, row, 26}, row);
    anderer.f().cmdAuswahl(1)->user_click();
    EXPECT_TRUE(l.tab().cell(row, 25).text.empty());
    QTest::keyClick(fenster().focusWidget(), Qt::Key_F5);
    EXPECT_FALSE(l.tab().cell(row, 25).text.empty());
    reiter("tabMonate", 11);
    EXPECT_EQ(Ansage(0, 1), QStringLiteral("Dienstag 1. Dezember"));
    EXPECT_EQ(plan().columns().last_day(), 31);
    reiter("tabJahre", 2);
    EXPECT_EQ(w<QTabBar>("tabMonate")->currentIndex(), 0) << "a later year begins in January";
    w<QTabBar>("tabMonate")->setFocus();
    QTest::keyClick(w<QTabBar>("tabMonate"), Qt::Key_Right);
    l.fenster.process_events();
    EXPECT_EQ(plan().columns().last_day(), 28);
}

TEST_F(Sitzung, Fenster_oeffnet_wie_es_geschlossen_wurde) {
    const Geometry g{15 * 25, 15 * 15, 15 * 770, 15 * 620};
    l.f().view()->set_geometry(g);
    QTimer::singleShot(0, &fenster(), [this] { klick("cmdBeenden"); });
    l.programm.schleife();
    EXPECT_EQ(l.programm.ende(), 0);
    Lauf<> zweiter(platte, u"PLATZ1", true);
    QStringList Startbild;
    zweiter.umgebung.beim_Gebietsschema = [&] {
        for (const QWidget* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == QLatin1String("frmStart") && fenster->isVisible())
                Startbild.append(fenster->findChild<QLabel*>(QStringLiteral("lblText_1"))->text());
        zweiter.uhr.weiter(2); // it was seen long enough
    };
    ASSERT_TRUE(zweiter.programm.starten());
    EXPECT_TRUE(Startbild.value(0).startsWith(QStringLiteral("Version ")));
    zweiter.fenster.process_events();
    EXPECT_EQ(zweiter.f().view()->geometry(), g);
    QTimer::singleShot(0, [&] { zweiter.fenster.window(zweiter.f())->close(); });
    zweiter.programm.schleife();
    EXPECT_EQ(zweiter.programm.ende(), 0);
}

TEST(Erster_Lauf, Leerer_Ordner_wird_ein_Datenordner) {
    TempOrdner ordner;
    for (const char* name : {"heim", "temp"})
        std::filesystem::create_directories(ordner.ordner() / name);
    PosixFileSystem fs;
    TestUhr uhr;
    Umgebung umgebung;
    umgebung.programmordner = aus_utf8(KALVORA_BIN_DIR "/");
    umgebung.datenordner = ordner.pfad(u"heim/");
    umgebung.tempordner = ordner.pfad(u"temp/");
    QtFenstersystem fenster;
    Meldungen meldungen;
    Programm programm({fs, uhr, umgebung}, fenster, {u"/nowelcomescreen"});
    ASSERT_TRUE(programm.starten()) << meldungen.texte.join(u' ').toStdString();
    frmKalvora& f = programm.hauptfenster().form();
    QTimer::singleShot(0, [&] {
        QWidget& w = *fenster.window(f);
        EXPECT_TRUE(w.isVisible());
        auto& plan = *w.findChild<PlanAnsicht*>(QStringLiteral("msgFlexGrid"));
        ziehe(plan, {plan.cell_rect(1, 3).center(), plan.cell_rect(1, 5).center()});
        QTest::mouseClick(w.findChild<QPushButton*>(QStringLiteral("cmdAuswahl_1")), Qt::LeftButton);
        w.close();
    });
    programm.schleife();
    EXPECT_EQ(programm.ende(), 0);
    EXPECT_TRUE(meldungen.texte.value(0).startsWith(QStringLiteral("Es wurden noch keine Mitarbeiterdaten")));
    EXPECT_TRUE(ordner.gibt_es(u"heim/kalvora/Kalvora.dat"));
    EXPECT_TRUE(ordner.gibt_es(u"heim/kalvora/Data/IniFiles/Kalvora_chef.ini"));
    std::filesystem::current_path("/"); // the program has changed the folder; it goes now
}

} // namespace kalvora
