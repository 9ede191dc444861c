// A user's hands: a mouse that drags, and message boxes that are answered while the program waits in them.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>

#include "ui/qt/plan_ansicht.h"

inline void PrintTo(const QString& text, std::ostream* aus) {
    *aus << '"' << text.toStdString() << '"';
}

namespace kalvora {

inline void bewege(QWidget& auf, QPoint p, Qt::MouseButtons gedrückt = Qt::NoButton) {
    QMouseEvent event(QEvent::MouseMove, p, auf.mapToGlobal(p), Qt::NoButton, gedrückt, Qt::NoModifier);
    QApplication::sendEvent(&auf, &event);
}

// Press at the first point, over the others, release at the last; viewport coordinates.
inline void ziehe(PlanAnsicht& plan, const std::vector<QPoint>& weg,
                  Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QTest::mousePress(plan.viewport(), Qt::LeftButton, mods, weg.front());
    for (const QPoint p : weg)
        bewege(*plan.viewport(), p, Qt::LeftButton);
    QTest::mouseRelease(plan.viewport(), Qt::LeftButton, mods, weg.back());
}

// Presses `knopf` in each message box that comes up, or does `antworte` instead, and keeps the texts.
class Meldungen {
public:
    explicit Meldungen(QString knopf = QStringLiteral("OK")) : knopf_(std::move(knopf)) {
        takt_.setInterval(1);
        QObject::connect(&takt_, &QTimer::timeout, &takt_, [this] { antworten(); });
        takt_.start();
    }
    std::function<void(QMessageBox&)> antworte;
    QStringList texte;

private:
    void antworten() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        if (box == beantwortet_) {
            if (++vergeblich_ > 2000) box->reject(); // a test that fails must not hang
            return;
        }
        beantwortet_ = box;
        vergeblich_ = 0;
        texte.append(box->text());
        if (antworte) return antworte(*box);
        for (QAbstractButton* knopf : box->buttons())
            if (knopf->text() == knopf_) return QTest::mouseClick(knopf, Qt::LeftButton);
    }
    QTimer takt_;
    QString knopf_;
    QPointer<QMessageBox> beantwortet_;
    int vergeblich_ = 0;
};

} // namespace kalvora
