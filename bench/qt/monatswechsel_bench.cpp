// kalvora_qtbench: another month in the program's window, until it is painted, beside a plain table of the
// toolkit that is filled and painted.
#include <QApplication>
#include <QElapsedTimer>
#include <QTableWidget>

#include <cstdlib>
#include <stdexcept>

#include "frame/programm.h"
#include "messung/firmenlager.h"
#include "messung/messung.h"
#include "platform/posix/posix_environment.h"
#include "ui/qt/fenstersystem.h"

namespace {

using namespace kalvora;
using namespace kalvora::bench;

// Lets events pass until the widget was painted.
class Malwächter : public QObject {
public:
    explicit Malwächter(QWidget* widget) : widget_(widget) { widget->installEventFilter(this); }
    void abwarten() {
        QElapsedTimer uhr;
        uhr.start();
        while (!gemalt_) {
            QApplication::processEvents();
            if (uhr.elapsed() > 10'000) throw std::runtime_error("nothing was painted");
        }
        gemalt_ = false;
    }
    void vergessen() {
        QApplication::processEvents();
        gemalt_ = false;
    }

protected:
    bool eventFilter(QObject*, QEvent* ereignis) override {
        gemalt_ = gemalt_ || ereignis->type() == QEvent::Paint;
        return false;
    }

private:
    QWidget* widget_;
    bool gemalt_ = false;
};

// The running program on a company of that size.
class Fenster {
public:
    Fenster(Firmenlager& lager, int Mitarbeiter) {
        const Text daten = lager.Datenpfad(Mitarbeiter);
        const std::string platz = lager.ordner().pfad() + "platz-" + std::to_string(Mitarbeiter);
        for (const char* name : {"KALVORA_SYSTEMPFAD", "TEMP"})
            setenv(name, platz.c_str(), 1);
        setenv("USERNAME", "messung", 1);
        programm_ =
            std::make_unique<Programm>(Plattform{fs_, uhr_, umgebung_}, fenster_,
                                       std::vector<Text>{u"/path", daten, u"/d:161126", u"/nowelcomescreen"});
        if (!programm_->starten()) throw std::runtime_error("the program did not start");
        fenster_.process_events();
        const QWidget* fenster = fenster_.window(programm_->hauptfenster().form());
        const auto* plan = fenster ? fenster->findChild<QAbstractScrollArea*>("msgFlexGrid") : nullptr;
        if (!plan) throw std::runtime_error("no plan");
        wächter_ = std::make_unique<Malwächter>(plan->viewport());
    }
    ~Fenster() {
        wächter_.reset();
        programm_->ende();
    }
    Fenster(const Fenster&) = delete;
    Fenster& operator=(const Fenster&) = delete;

    double Monat_wechseln() {
        wächter_->vergessen();
        TabStrip& monate = programm_->hauptfenster().form().tabMonate;
        return Sekunden([&] {
            monate.user_select((monate.selected() + 1) % 12);
            wächter_->abwarten();
        });
    }
    int Zeilen() const { return programm_->hauptfenster().form().msgFlexGrid.rows(); }

private:
    PosixFileSystem fs_;
    PosixClock uhr_;
    PosixEnvironment umgebung_;
    QtFenstersystem fenster_;
    std::unique_ptr<Programm> programm_;
    std::unique_ptr<Malwächter> wächter_;
};

// Names, headings and every day's cell with letter and colours, as one would do it with the ready-made table.
class Einfache_Tabelle {
public:
    explicit Einfache_Tabelle(int zeilen) : tabelle_(zeilen, 32), wächter_(tabelle_.viewport()) {
        tabelle_.resize(1280, 600);
        tabelle_.show();
        füllen();
    }
    double füllen() {
        wächter_.vergessen();
        ++runde_;
        return Sekunden([&] {
            tabelle_.setUpdatesEnabled(false);
            for (int zeile = 0; zeile < tabelle_.rowCount(); ++zeile)
                for (int spalte = 0; spalte < tabelle_.columnCount(); ++spalte)
                    tabelle_.setItem(zeile, spalte, zelle(zeile, spalte));
            tabelle_.setUpdatesEnabled(true);
            wächter_.abwarten();
        });
    }

private:
    QTableWidgetItem* zelle(int zeile, int spalte) const {
        const bool eintrag = (zeile + spalte + runde_) % 7 == 0;
        auto* neu = new QTableWidgetItem(spalte == 0 ? QStringLiteral("Mustermann Anna")
                                                     : QString(eintrag ? QStringLiteral("U") : QString()));
        neu->setForeground(QColor(0, 0, 0));
        neu->setBackground(eintrag ? QColor(128, 255, 128) : QColor(255, 255, 255));
        return neu;
    }

    QTableWidget tabelle_;
    Malwächter wächter_;
    int runde_ = 0;
};

void Monatswechsel(benchmark::State& lauf, Tafel& tafel, Firmenlager& lager) {
    {
        Fenster fenster(lager, 300);
        Einfache_Tabelle tabelle(fenster.Zeilen());
        abwechselnd(
            lauf, tafel,
            {"Monatswechsel im Fenster, 300 Mitarbeiter", "QTableWidget dieser Größe füllen", 1, true},
            [&] { return fenster.Monat_wechseln(); }, [&] { return tabelle.füllen(); });
    }
    std::map<int, std::unique_ptr<Fenster>> alle;
    for (const int n : {50, 300, 5000})
        alle[n] = std::make_unique<Fenster>(lager, n);
    Wachstum_messen(
        tafel, "Monatswechsel im Fenster", {50, 300, 5000}, [&](int n) { return alle[n]->Monat_wechseln(); },
        12);
}

} // namespace

int main(int argc, char** argv) {
    QApplication anwendung(argc, argv);
    Tafel tafel;
    Firmenlager lager;
    benchmark::RegisterBenchmark("Monatswechsel",
                                 [&](benchmark::State& l) { Monatswechsel(l, tafel, lager); })
        ->UseManualTime()
        ->Iterations(41)
        ->Unit(benchmark::kMillisecond);
    return laufen(argc, argv, tafel);
}
