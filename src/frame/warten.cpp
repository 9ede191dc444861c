// The wait for a data folder on a network volume that is not mounted yet.
#include <algorithm>

#include "files/ordner.h"
#include "frame/programm.h"

namespace kalvora {

namespace {

constexpr double TAKT = 0.5;         // seconds
constexpr int TAKTE = 60;            // 30 seconds in all
constexpr int TAKTE_JE_PRÜFUNG = 20; // the folder is looked for every ten seconds
constexpr double ABSCHIED = 1.5, FREUDE = 1.0;

} // namespace

// A folder that is there while the step still fails is not waited for again and again.
void Programm::Warte_und_wiederhole(int& erkannt, const std::exception_ptr& fehler, const Text& fehlt) {
    constexpr int HÖCHSTENS_ERKANNT = 3;
    switch (Warte_auf_Datenträger(fehlt)) {
    case Wartende::Erneut: erkannt = 0; return;
    case Wartende::Erkannt:
        if (++erkannt <= HÖCHSTENS_ERKANNT) return;
        std::rethrow_exception(fehler);
    case Wartende::Beenden: throw Ende{2};
    }
}

// Before the data folder is known it is the workstation's own that cannot be reached. Logs may have a share
// of their own.
Programm::Wartende Programm::Warte_auf_Datenträger(const Text& fehlt) {
    if (!start_) {
        start_ = std::make_unique<frmStart>(app_, PROGRAMMVERSION);
        app_.open(*start_);
    }
    frmStart& f = *start_;
    f.Wartezustand(true);
    if (f.view()) f.view()->paint_now();
    const bool Logs = !fehlt.empty() && fehlt == platz_.Logpfad;
    const Text wo = Logs                       ? platz_.Logpfad
                    : platz_.Datenpfad.empty() ? platz_.Systempfad
                                               : ParentDir(platz_.Datenpfad);
    app_.Hinweis((Logs ? u"Der Ordner für das Logbuch " : u"Der Datenordner ") + wo +
                 u" ist nicht verfügbar");
    const Wartende ende = Wartezeit(f, Logs);
    if (ende == Wartende::Beenden) {
        f.Zustand_zeigen(u"Das Programm wird beendet");
        app_.windows().status(f.lblText4.text());
        app_.Pause(ABSCHIED);
    } else {
        f.Wartezustand(false);
    }
    return ende;
}

Programm::Wartende Programm::Wartezeit(frmStart& f, bool Logs) {
    for (int zähler = TAKTE; zähler >= 1;) {
        f.Zustand_zeigen(u"Auf den Datenordner wird gewartet ... " + ziffern(zähler / 2) + u" Sekunden");
        if (zähler % TAKTE_JE_PRÜFUNG == 0) app_.windows().status(f.lblText4.text());
        app_.Pause_in(f, TAKT);
        --zähler;
        if (f.tag() == u"D") return Wartende::Erneut;
        if (f.tag() == u"E") return Wartende::Beenden;
        if (zähler % TAKTE_JE_PRÜFUNG != 0) continue;
        const bool bekannt = !platz_.Datenpfad.empty() && !Logs;
        const auto namen = plattform_.fs.list(bekannt ? platz_.Datenpfad
                                              : Logs  ? ParentDir(platz_.Logpfad)
                                                      : platz_.Systempfad);
        const auto passt = [](const Text& name) { return passt_auf_Maske(name, u"*Data.dat"); };
        if (!namen || (bekannt && std::none_of(namen->begin(), namen->end(), passt))) continue;
        f.Zustand_zeigen(u"Der Datenordner wurde erkannt");
        app_.windows().status(f.lblText4.text());
        app_.Pause(FREUDE);
        return Wartende::Erkannt;
    }
    return Wartende::Beenden;
}

} // namespace kalvora
