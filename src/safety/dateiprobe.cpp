#include "safety/dateiprobe.h"

#include <algorithm>

#include "files/feiertagsdatei.h"
#include "files/mitarbeiterdaten.h"
#include "files/monatsdatei.h"
#include "files/ordner.h"
#include "files/versionsname.h"

namespace kalvora {

namespace {

constexpr TextView PROBEORDNER = u"/.probe/";

// The file to judge, alone in its folder. Everything else is the real disk, for reading only: the readers
// look up the installation's files there.
class Probedateisystem : public FileSystem {
public:
    Probedateisystem(FileSystem& fs, TextView name, std::string_view bytes)
        : fs_(fs), pfad_(Text(PROBEORDNER) + Text(name)), bytes_(bytes) {}

    Ergebnis<Handle> open(const Text& path, OpenMode mode) override {
        if (mode != OpenMode::Read) return Ergebnis<Handle>::fehler(FEHLER_SCHREIBSCHUTZ);
        if (path != pfad_) return fs_.open(path, mode);
        gelesen_ = 0;
        return PROBE;
    }
    Ergebnis<std::size_t> read(Handle h, char* buffer, std::size_t size) override {
        if (h != PROBE) return fs_.read(h, buffer, size);
        const std::size_t n = bytes_.substr(gelesen_).copy(buffer, size);
        gelesen_ += n;
        return n;
    }
    Ergebnis<std::size_t> read_at(Handle h, std::uint64_t offset, char* buffer, std::size_t size) override {
        if (h != PROBE) return fs_.read_at(h, offset, buffer, size);
        return offset >= bytes_.size() ? 0 : bytes_.copy(buffer, size, static_cast<std::size_t>(offset));
    }
    Ergebnis<FileInfo> info(Handle h) override { return h == PROBE ? Stand() : fs_.info(h); }
    Fehlercode close(Handle h) override { return h == PROBE ? 0 : fs_.close(h); }
    Ergebnis<FileInfo> info(const Text& path) override {
        if (path == pfad_) return Stand();
        return path.starts_with(PROBEORDNER) ? Ergebnis<FileInfo>::fehler(FEHLER_NICHT_GEFUNDEN)
                                             : fs_.info(path);
    }
    Ergebnis<std::vector<Text>> list(const Text& folder) override {
        return folder == PROBEORDNER ? std::vector<Text>{Dateiname_aus_Pfad(pfad_)} : fs_.list(folder);
    }
    Ergebnis<Text> real_folder(const Text& folder) override { return folder; }
    Ergebnis<bool> is_link(const Text& path) override { return path == pfad_ ? false : fs_.is_link(path); }
    void wait(double seconds) override { fs_.wait(seconds); }
    Text current_folder() override { return Text(PROBEORDNER); }

    Ergebnis<std::size_t> write(Handle, std::string_view) override {
        return Ergebnis<std::size_t>::fehler(FEHLER_SCHREIBSCHUTZ);
    }
    Fehlercode sync(Handle) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode truncate(Handle, std::uint64_t) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode copy_rights(Handle, const FileInfo&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode rename(const Text&, const Text&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode rename_new(const Text&, const Text&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode remove(const Text&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode remove_folder(const Text&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode make_folder(const Text&) override { return FEHLER_SCHREIBSCHUTZ; }
    Fehlercode change_folder(const Text&) override { return FEHLER_SCHREIBSCHUTZ; }

private:
    static constexpr Handle PROBE = -2; // never one of the real file system
    Ergebnis<FileInfo> Stand() const {
        FileInfo info;
        info.size = bytes_.size();
        info.time = 1;
        return info;
    }
    FileSystem& fs_;
    Text pfad_;
    std::string_view bytes_;
    std::size_t gelesen_ = 0;
};

// Nobody looks, and nobody is waited for: what stands in memory will not change.
class Niemand : public WindowSystem {
    void open(Form&) override {}
    void close(Form&) override {}
    void run(Form&) override {}
    void run_modal(Form&) override {}
    void quit() override {}
    void message(const Text&) override {}
    Antwort question(const Text&, const Frageart& art) override { return art.vorgabe; }
    void process_events() override {}
    void wait(double) override {}
    void beep() override {}
    void set_pointer(Mauszeiger) override {}
    bool active(const Form&) override { return false; }
};

// A workstation whose data folder holds that one file.
struct Probeplatz {
    Probeplatz(Dateikanal& echt, const Arbeitsplatz& p, const Text& name, std::string_view bytes)
        : fs(echt.fs(), name, bytes), werk(fs, echt.werk().uhr(), u"probe"), kanal(werk, app, 1), platz(p) {
        platz.Datenpfad = PROBEORDNER;
    }
    Probedateisystem fs;
    Niemand fenster;
    Application app{fenster};
    Dateiwerk werk;
    Dateikanal kanal;
    Arbeitsplatz platz;
};

bool Monat_lesen(Probeplatz& p, const Text& name) {
    const Text pfad = p.platz.Datenpfad + name;
    Monatsinhalt inhalt;
    inhalt.yymm = links(name, 4);
    p.kanal.Datei_öffnen(pfad, Dateimodus::Input);
    Monat_einlesen(p.kanal, pfad, Codefilter(HÖCHSTZAHL_SÄTZE), inhalt);
    return !inhalt.fehlerhaft();
}

bool Zeilen_lesbar(std::string bytes) {
    Rohzeilen zeilen(bytes.data(), bytes.size());
    bool eine = false;
    for (auto zeile = zeilen.nächste(); zeile; zeile = zeilen.nächste()) {
        const std::string_view roh(zeile->anfang, zeile->länge);
        const auto fremd = [](char c) { return static_cast<unsigned char>(c) < 32; };
        if (roh.empty() || roh[0] == '\xFF' || std::any_of(roh.begin(), roh.end(), fremd)) return false;
        eine = true;
    }
    return eine;
}

// False: it can be read, but for some lines.
bool lesen(Probeplatz& p, const Text& name, std::string_view bytes) {
    if (gleich_ohne_Fall(name, u"Konfigdaten.dat")) {
        Konfigdaten(p.kanal, p.platz).Konfigdaten_lesen();
    } else if (gleich_ohne_Fall(name, u"Mitarbeiterdaten.dat")) {
        Mitarbeiterdatei_lesen(p.kanal, p.platz);
    } else if (gleich_ohne_Fall(name, u"Feiertage.dat")) {
        Feiertagsdatei(p.kanal, p.platz).Feiertage_lesen();
    } else if (gleich_ohne_Fall(name, u"Ferientage.dat")) {
        Ferientagedatei ferien(p.kanal, p.platz);
        ferien.Ferientage_lesen();
        if (!ferien.Daten_vorhanden()) throw Dateischaden(u"Die Datei enthält keine Ferientage.");
    } else if (ist_Versionsname(name)) {
        return Monat_lesen(p, name);
    } else if (!Zeilen_lesbar(std::string(bytes))) {
        throw Dateischaden(u"Die Datei '" + name + u"' ist fehlerhaft.");
    }
    return true;
}

} // namespace

Dateiprobe::Befund Dateiprobe::prüfen(const Text& name, std::string_view bytes) const {
    Probeplatz p(kanal_, platz_, name, bytes);
    try {
        if (lesen(p, name, bytes)) return {};
        return {Urteil::fehlerhafte_Zeilen, u"Die Datei '" + name + u"' enthält fehlerhafte Zeilen."};
    } catch (const Dateischaden& schaden) {
        return {Urteil::beschädigt, schaden.text()};
    } catch (const Zugriffsabbruch& abbruch) {
        return {Urteil::ungeprüft, abbruch.text()};
    } catch (const Laufzeitfehler& fehler) {
        return {Urteil::beschädigt, fehler.text()};
    } catch (const Programmabbruch& abbruch) {
        return {Urteil::ungeprüft, abbruch.text()};
    }
}

std::optional<int> Dateiprobe::Startjahr(std::string_view bytes) const {
    Probeplatz p(kanal_, platz_, u"Mitarbeiterdaten.dat", bytes);
    try {
        return Mitarbeiterdatei_lesen(p.kanal, p.platz).Startjahr;
    } catch (const kalvora::Fehler&) {
        return std::nullopt;
    }
}

std::optional<Konfiguration> Dateiprobe::Konfig(std::string_view bytes) const {
    Probeplatz p(kanal_, platz_, u"Konfigdaten.dat", bytes);
    Konfigdaten konfig(p.kanal, p.platz);
    try {
        konfig.Konfigdaten_lesen();
        return konfig.werte();
    } catch (const kalvora::Fehler&) {
        return std::nullopt;
    }
}

} // namespace kalvora
