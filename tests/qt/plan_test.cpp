// The plan under mouse, keys and wheel, what stays in view, and what it says to pointers and screen readers.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QToolTip>

#include "qt/testfenster.h"

namespace kalvora {

void PrintTo(const Selection& s, std::ostream* aus) {
    *aus << s.row << "," << s.col << " - " << s.row_sel << "," << s.col_sel;
}

namespace {

struct Plan : testing::Test {
    Testfenster t{40, {760, 560}}; // too small for all rows and all days
    Table& tab = t.form.msgFlexGrid;

    Plan() {
        tab.on_selection_changed = [this](int mausreihe) { tab.set_HighLight(mausreihe >= 1); };
        t.plan().setFocus();
    }
    PlanAnsicht& plan() { return t.plan(); }
    void rollen(int zeile, int versatz) {
        plan().verticalScrollBar()->setValue(zeile);
        plan().horizontalScrollBar()->setValue(versatz);
        t.zeigen();
    }
    QString Tipp(int row, int col) {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->inherits("QTipLabel")) w->hide(); // otherwise it lingers
        const QPoint p = t.Mitte(row, col);
        QHelpEvent event(QEvent::ToolTip, p, plan().viewport()->mapToGlobal(p));
        QApplication::sendEvent(plan().viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
};
} // namespace

TEST_F(Plan, Ziehen_markiert_Tage_und_Zeilen_genau) {
    struct Fall {
        std::vector<std::pair<int, int>> weg;
        Selection erwartet;
    };
    const Fall FÄLLE[]{{{{3, 5}, {3, 6}, {3, 8}}, {3, 5, 3, 8}}, {{{2, 4}, {4, 9}, {6, 7}}, {2, 4, 6, 7}},
                       {{{6, 7}, {2, 4}, {7, 2}}, {6, 7, 7, 2}}, {{{5, 5}}, {5, 5, 5, 5}},
                       {{{4, 3}, {4, 0}}, {4, 3, 4, 1}},  // over the names: day 1
                       {{{4, 3}, {0, 5}}, {4, 3, 1, 5}}}; // over the headings: the first row
    for (const Fall& fall : FÄLLE) {
        tab.set_HighLight(false);
        std::vector<QPoint> weg;
        for (const auto& [row, col] : fall.weg)
            weg.push_back(t.Mitte(row, col));
        ziehe(plan(), weg);
        EXPECT_EQ(tab.selection(), fall.erwartet);
        EXPECT_TRUE(tab.HighLight());
    }
    ziehe(plan(), {t.Mitte(4, 0), t.Mitte(3, 6)});
    EXPECT_EQ(tab.selection(), FÄLLE[5].erwartet) << "a drag begins in the body";
}

TEST_F(Plan, Ziehen_ueber_den_Rand_rollt_und_endet_draussen) {
    const int letzte_sichtbare = plan().rows().letzte_in(plan().viewport()->height());
    ASSERT_LT(letzte_sichtbare, tab.rows() - 1);
    const QPoint drunter(t.Mitte(3, 6).x(), plan().viewport()->height() + 200);
    QTest::mousePress(plan().viewport(), Qt::LeftButton, {}, t.Mitte(3, 5));
    bewege(*plan().viewport(), drunter);
    EXPECT_EQ(tab.selection(), (Selection{3, 5, letzte_sichtbare, 6}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tab.TopRow() > 2; }, 3000));
    EXPECT_GT(tab.selection().row_sel, letzte_sichtbare);
    QTest::mouseRelease(plan().viewport(), Qt::LeftButton, {}, drunter);
    EXPECT_EQ(tab.selection().row, 3);
}

TEST_F(Plan, Tasten_bewegen_und_erweitern) {
    const int letzte = tab.rows() - 1;
    struct Fall {
        int taste;
        Qt::KeyboardModifiers mods;
        Selection vorher, erwartet;
    };
    const Selection mitte{5, 10, 5, 10};
    const Fall FÄLLE[]{{Qt::Key_Right, {}, mitte, {5, 11, 5, 11}},
                       {Qt::Key_Down, Qt::ShiftModifier, {5, 10, 6, 12}, {5, 10, 7, 12}},
                       {Qt::Key_Home, {}, mitte, {5, 1, 5, 1}},
                       {Qt::Key_End, {}, mitte, {5, 30, 5, 30}},
                       {Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier, mitte, {5, 10, letzte, 10}},
                       {Qt::Key_Down, {}, {letzte, 3, letzte, 3}, {letzte, 3, letzte, 3}}};
    for (const Fall& fall : FÄLLE) {
        tab.set_selection(fall.vorher);
        tab.set_HighLight(true);
        QTest::keyClick(&plan(), static_cast<Qt::Key>(fall.taste), fall.mods);
        EXPECT_EQ(tab.selection(), fall.erwartet) << QKeySequence(fall.taste).toString().toStdString();
        const QRect ziel = plan().cell_rect(fall.erwartet.row_sel, fall.erwartet.col_sel);
        EXPECT_TRUE(plan().body_rect().contains(ziel)) << "the moving end comes into view";
    }
    tab.set_row_height(6, 0); // a hidden row is passed over
    tab.set_selection(mitte);
    QTest::keyClick(&plan(), Qt::Key_Down);
    EXPECT_EQ(tab.selection(), (Selection{7, 10, 7, 10}));
    // A page and more with the anchor scrolled out of view, which takes a marking away on its own.
    tab.on_scrolled = [this] {
        if (!tab.row_visible(tab.selection().row)) tab.set_HighLight(false);
    };
    for (int seite = 1; seite <= 2; ++seite)
        QTest::keyClick(&plan(), Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_FALSE(plan().row_visible(7));
    EXPECT_TRUE(tab.HighLight());
    EXPECT_EQ(tab.selection().row, 7);
    EXPECT_TRUE(plan().row_visible(tab.selection().row_sel));
    tab.set_HighLight(false);
    rollen(1, 0);
    QTest::keyClick(&plan(), Qt::Key_Right);
    EXPECT_EQ(tab.selection(), (Selection{2, 18, 2, 18}))
        << "first today of the first person, below her heading";
}

// The plan can be painted while it is being rebuilt, and whatever ends that, it is told of the result once.
TEST_F(Plan, Eine_Zeichenpause_endet_auch_mit_einer_Ausnahme) {
    int gemeldet = 0;
    QObject::connect(&plan().model(), &QAbstractItemModel::dataChanged, [&] { ++gemeldet; });
    const auto umbauen = [&] {
        const Table::Zeichenpause pause(tab);
        {
            const Table::Zeichenpause innere(tab);
            tab.edit(2, 5).text = u"X";
        }
        tab.edit(2, 6).text = u"X";
        t.zeigen();
        EXPECT_EQ(gemeldet, 0);
        throw std::runtime_error("mitten darin");
    };
    EXPECT_THROW(umbauen(), std::runtime_error);
    t.zeigen();
    EXPECT_EQ(gemeldet, 1);
    {
        const Table::Zeichenpause pause(tab);
        tab.resize(3, 33); // the view has counted more rows
        plan().viewport()->repaint();
        Tipp(2, 0);
    }
    t.zeigen();
    EXPECT_EQ(plan().model().rowCount(), 3);
    EXPECT_EQ(plan().rows().zeilen(), 3);
}

TEST_F(Plan, Tipps_und_Ansagen_sagen_was_die_Logik_sagt) {
    tab.tool_tip = [](int row, int col) {
        return row == 3 && col == 4 ? Text(u"Urlaub\n<b>Kur</b>") : Text();
    };
    EXPECT_TRUE(Tipp(3, 4).contains(QStringLiteral("Urlaub\n&lt;b&gt;Kur&lt;/b&gt;")))
        << Tipp(3, 4).toStdString();
    tab.edit(2, 0).text = u"Freifrau von und zu Hohenlohe-Waldenburg, Elisabeth Charlotte";
    t.zeigen();
    EXPECT_TRUE(Tipp(2, 0).contains(QStringLiteral("Elisabeth Charlotte"))) << "a name that is cut";
    EXPECT_EQ(Tipp(3, 0), QString());
    tab.accessible_name = [](int row, int col) {
        return row == 4 && col == 4 ? Text(u"Mittwoch 4. November, Urlaub") : Text();
    };
    QAccessibleInterface* zugang = QAccessible::queryAccessibleInterface(&plan());
    ASSERT_TRUE(zugang && zugang->tableInterface());
    auto* tafel = zugang->tableInterface();
    QAccessibleInterface* zelle = tafel->cellAt(4, 4);
    EXPECT_EQ(zelle->text(QAccessible::Name), QStringLiteral("Mittwoch 4. November, Urlaub"));
    ziehe(plan(), {t.Mitte(4, 3), t.Mitte(4, 5)});
    EXPECT_TRUE(zelle->state().selected);
    EXPECT_EQ(tafel->selectedCellCount(), 3);
    EXPECT_EQ(zugang->child(plan().accessible_child(4, 4)), zelle) << "what is announced";
}

TEST(Plangroesse, Einunddreissig_Tage_passen_auf_1280_mal_720) {
    Testfenster t(300);
    t.form.msgFlexGrid.edit(0, 31).text = u"Di\r31";
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        t.form.cmdAuswahl(b)->set_caption(u"Grund Nummer " + ziffern(b));
        t.form.cmdAuswahl(b)->set_visible(true);
    }
    t.form.picKommentar.show(u"Zahnarzt am Vormittag, danach im Büro", 4, 20);
    t.zeigen();
    const auto* kommentar = t.fenster().findChild<QLabel*>(QStringLiteral("lblKommentar"));
    EXPECT_TRUE(kommentar->isVisible());
    EXPECT_GE(kommentar->height(), kommentar->heightForWidth(kommentar->width())) << "the whole text is seen";
    EXPECT_EQ(t.fenster().size(), QSize(1280, 720));
    EXPECT_EQ(t.plan().horizontalScrollBar()->maximum(), 0);
    EXPECT_LE(t.plan().columns().rechts(31), t.plan().viewport()->width());
    for (int tag = 1; tag <= 31; ++tag)
        EXPECT_GE(t.plan().columns().breite(tag), 25);
    EXPECT_TRUE(t.form.msgFlexGrid.row_visible(10)) << "rows beside five lines of reasons";
    for (const char* name : {"cmdAuswahl_25", "cmdBeenden", "lblStatus_3"}) {
        const auto* w = t.fenster().findChild<QWidget*>(QLatin1String(name));
        EXPECT_TRUE(t.fenster().rect().contains(QRect(w->mapTo(&t.fenster(), QPoint()), w->size()))) << name;
    }
}

} // namespace kalvora
