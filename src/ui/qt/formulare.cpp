// The layout files, by the names of their windows.
#include <QDialog>
#include <QMainWindow>

#include "ui/qt/fenster_ansicht.h"
#include "ui_frmKalvora.h"
#include "ui_frmRecovery.h"
#include "ui_frmStart.h"

namespace kalvora {

namespace {

template <class Formular, class Fenster>
std::unique_ptr<QWidget> Aufbau() {
    auto fenster = std::make_unique<Fenster>();
    Formular().setupUi(fenster.get());
    if (fenster->property("rahmenlos").toBool())
        fenster->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    return fenster;
}

} // namespace

std::unique_ptr<QWidget> Fenster_aus_Formular(TextView name) {
    if (name == u"frmKalvora") return Aufbau<Ui::frmKalvora, QMainWindow>();
    if (name == u"frmRecovery") return Aufbau<Ui::frmRecovery, QDialog>();
    if (name == u"frmStart") return Aufbau<Ui::frmStart, QFrame>();
    return nullptr;
}

} // namespace kalvora
