// The window to compare with: the toolkit's main window with its own table, empty, of the size that the plan
// of 50 employees has. Says when it was painted, and ends.
#include <QMainWindow>
#include <QTableWidget>

#include "erstes_bild.h"

int main(int argc, char** argv) {
    QApplication anwendung(argc, argv);
    QMainWindow fenster;
    auto* tabelle = new QTableWidget(56, 32);
    fenster.setCentralWidget(tabelle);
    fenster.resize(1280, 720);
    const ErstesBild bild([tabelle](const QWidget& w) { return &w == tabelle->viewport(); },
                          [] { QApplication::quit(); });
    fenster.show();
    return QApplication::exec();
}
