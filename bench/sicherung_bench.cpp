// A backup of a large company beside putting the same files into one, and its restore beside copying them.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "messung/grosser_ordner.h"
#include "messungen.h"
#include "safety/backups.h"
#include "safety/ordnerersatz.h"

namespace kalvora::bench {

namespace {

namespace fs = std::filesystem;

// A file descriptor for what has no stream: reading and writing in pieces, and syncing.
class Datei {
public:
    Datei(const std::string& pfad, int wie) : h_(::open(pfad.c_str(), wie | O_CLOEXEC, 0644)) {
        if (h_ < 0) throw std::runtime_error("cannot open " + pfad);
    }
    ~Datei() { ::close(h_); }
    Datei(const Datei&) = delete;
    Datei& operator=(const Datei&) = delete;
    int operator*() const { return h_; }
    void sichern() const {
        if (::fsync(h_) != 0) throw std::runtime_error("fsync failed");
    }

private:
    int h_;
};

class Sicherung {
public:
    explicit Sicherung(Umfeld& umfeld)
        : ordner_(großer_Ordner(umfeld.lager)), station_(aus_utf8(ordner_)),
          backups_(station_.kanal, station_.platz, station_.daten.konfig, station_.daten.log),
          wieder_(station_.kanal, station_.platz),
          ersatz_(station_.kanal, station_.platz, wieder_, backups_, station_.daten.log),
          kopie_(umfeld.lager.ordner().pfad() + "kopie/") {
        station_.platz.Backuppfad = station_.platz.Datenpfad + u"Backups/";
        fs::create_directories(ordner_ + "Backups");
        fs::create_directories(kopie_);
        for (const char* wo : {"", "Logs/"})
            for (const auto& datei : fs::directory_iterator(ordner_ + wo))
                if (datei.is_regular_file()) dateien_.push_back(datei.path());
    }

    // Each backup goes again, so that the disk does not fill.
    double Backup() {
        Sicherung_vergessen();
        bool ok = false;
        const double zeit = Sekunden([&] { ok = backups_.Backup_erstellen(u"T"); });
        if (!ok) throw std::runtime_error("no backup was made");
        return zeit;
    }
    double cat() {
        const std::string ziel = kopie_ / "alle";
        fs::remove(ziel);
        return Sekunden([&] {
            std::vector<char> puffer(128 * 1024);
            const Datei aus(ziel, O_WRONLY | O_CREAT | O_EXCL);
            for (const fs::path& pfad : dateien_) {
                const Datei ein(pfad, O_RDONLY);
                while (const auto n = ::read(*ein, puffer.data(), puffer.size()))
                    if (n < 0 || ::write(*aus, puffer.data(), static_cast<std::size_t>(n)) != n)
                        throw std::runtime_error("cat failed");
            }
            aus.sichern();
        });
    }
    // Of a folder in which every file is another one since: what stands as it was would not be written.
    double Wiederherstellen() { return wiederherstellen(false); }
    // With the backup made before, as the user waits for it.
    double Wiederherstellungspunkt() { return wiederherstellen(true); }
    // Over the copies of the run before, as the restore replaces what stands there.
    double cp() {
        return Sekunden([&] {
            for (const fs::path& pfad : dateien_)
                kopiert_und_gesichert(pfad, kopie_ / pfad.filename());
        });
    }

private:
    double wiederherstellen(bool sichern) {
        if (punkt_.empty()) {
            Backup();
            punkt_ = station_.platz.Backuppfad + backups_.Backupname();
        }
        for (const fs::path& pfad : dateien_)
            letzte_Zeile_verdoppeln(pfad);
        ::sync();
        bool ok = false;
        const double zeit = Sekunden([&] {
            const auto container = wieder_.lesen(punkt_);
            ok = container && ersatz_.Datenordner_ersetzen(*container, {sichern, {}});
        });
        if (!ok) throw std::runtime_error("the restore was refused");
        for (const auto& datei : fs::directory_iterator(ordner_ + "Backups"))
            if (datei.path() != fs::path(zu_utf8(punkt_))) fs::remove(datei);
        return zeit;
    }
    static void letzte_Zeile_verdoppeln(const fs::path& pfad) {
        std::ifstream ein(pfad, std::ios::binary);
        const std::string alles{std::istreambuf_iterator<char>(ein), {}};
        std::ofstream(pfad, std::ios::binary | std::ios::app)
            << alles.substr(alles.rfind('\n', alles.size() - 2) + 1);
    }
    void Sicherung_vergessen() {
        if (!backups_.Backupname().empty()) fs::remove(ordner_ + "Backups/" + zu_utf8(backups_.Backupname()));
    }
    std::string ordner_;
    Text punkt_; // path of the backup that is restored
    Arbeitsstation station_;
    Backups backups_;
    Wiederherstellung wieder_;
    Ordnerersatz ersatz_;
    fs::path kopie_;
    std::vector<fs::path> dateien_;
};

} // namespace

void Sicherung_messen(Umfeld& umfeld) {
    const auto messen = [&umfeld](const char* name, const Ziel& ziel, double (Sicherung::*eins)(),
                                  double (Sicherung::*zwei)()) {
        benchmark::RegisterBenchmark(name,
                                     [=, &umfeld](benchmark::State& lauf) {
                                         Sicherung sicherung(umfeld);
                                         abwechselnd(
                                             lauf, umfeld.tafel, ziel, [&] { return (sicherung.*eins)(); },
                                             [&] { return (sicherung.*zwei)(); });
                                     })
            ->UseManualTime()
            ->Iterations(11)
            ->Unit(benchmark::kMillisecond);
    };
    const char* const cp = "cp derselben Dateien mit fsync";
    messen("Backup", {"Backup von 100 MB", "cat derselben Dateien in eine, mit fsync", 3}, &Sicherung::Backup,
           &Sicherung::cat);
    messen("Wiederherstellen", {"Datenordner von 100 MB wiederherstellen", cp, 3},
           &Sicherung::Wiederherstellen, &Sicherung::cp);
    // A backup and a restore, each within its own.
    messen("Wiederherstellungspunkt", {"ebenso, mit dem Backup davor", cp, 6},
           &Sicherung::Wiederherstellungspunkt, &Sicherung::cp);
}

} // namespace kalvora::bench
