#include <gtest/gtest.h>

#include <QDir>

#include "frame/frm_start.h"
#include "qt/testfenster.h"

namespace kalvora {

namespace {

void sichern(QWidget& fenster, const char* name) {
    const QString ordner = qEnvironmentVariable("KALVORA_BILDER");
    if (!ordner.isEmpty()) fenster.grab().save(QDir(ordner).filePath(QLatin1String(name)));
}

} // namespace

TEST(Bilder, Hauptfenster) {
    Testfenster t;
    t.form.msgFlexGrid.set_selection({4, 9, 6, 13});
    t.form.msgFlexGrid.set_HighLight(true);
    t.zeigen();
    sichern(t.fenster(), "plan.png");
}

} // namespace kalvora
