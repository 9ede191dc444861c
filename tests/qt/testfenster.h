// A mouse that drags, and a main window with made-up contents on the real windowing system: November 2026,
// today the 18th, a few dozen people below their headings.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

#include "plan/frm_kalvora.h"
#include "ui/qt/fenstersystem.h"
#include "ui/qt/plan_ansicht.h"

inline void PrintTo(const QString& text, std::ostream* aus) {
    *aus << '"' << text.toStdString() << '"';
}

namespace kalvora {

inline void bewege(QWidget& auf, QPoint p) { // with the button down
    QMouseEvent event(QEvent::MouseMove, p, auf.mapToGlobal(p), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&auf, &event);
}

// Press at the first point, over the others, release at the last; viewport coordinates.
inline void ziehe(PlanAnsicht& plan, const std::vector<QPoint>& weg) {
    QTest::mousePress(plan.viewport(), Qt::LeftButton, {}, weg.front());
    for (const QPoint p : weg)
        bewege(*plan.viewport(), p);
    QTest::mouseRelease(plan.viewport(), Qt::LeftButton, {}, weg.back());
}

struct Testfenster {
    explicit Testfenster(int personen = 40, QSize größe = {1280, 720});
    ~Testfenster();

    QWidget& fenster() { return *system.window(form); }
    PlanAnsicht& plan() { return *fenster().findChild<PlanAnsicht*>(QStringLiteral("msgFlexGrid")); }
    // Middle of a cell of the plan, viewport coordinates.
    QPoint Mitte(int row, int col) { return plan().cell_rect(row, col).center(); }
    void zeigen(); // lets Qt lay out and paint

    QtFenstersystem system;
    Application app{system};
    frmKalvora form{app};
};

} // namespace kalvora
