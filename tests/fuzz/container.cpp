// A backup container, and the data folder replaced by it: what is taken are plain names and whole lines that
// make the same container again, and nothing is written but these names in the two folders.
#include <set>

#include "fuzz/fuzzplatz.h"
#include "safety/ordnerersatz.h"

namespace kalvora::fuzz {

namespace {

void Mitglieder_prüfen(const std::vector<Containermitglied>& alle, const std::string& bytes) {
    std::set<Text> namen;
    Schlüsselquelle schlüssel(1);
    Containerschreiber neu(schlüssel);
    for (const Containermitglied& m : alle) {
        fordere(Mitgliedsname_zulässig(m.name) && namen.insert(klein(m.name)).second, "a name");
        fordere(m.bytes.data() >= bytes.data() &&
                    m.bytes.data() + m.bytes.size() <= bytes.data() + bytes.size(),
                "a member outside the container");
        fordere(m.bytes.empty() || m.bytes.back() == '\n', "half a line");
        neu.anfügen(m.name, m.bytes);
    }
    const std::string noch_einmal = neu.entnehmen();
    const auto gelesen = Container_lesen(noch_einmal);
    fordere(gelesen && gelesen->size() == alle.size(), "a container that does not come back");
    for (std::size_t n = 0; n < alle.size(); ++n) {
        const bool Loch = alle[n].bytes.find('\0') != std::string_view::npos;
        fordere(Loch || (*gelesen)[n].bytes == alle[n].bytes, "a member that does not come back");
    }
}

} // namespace

void prüfe(const Eingabe& eingabe) {
    const auto alle = Container_lesen(eingabe.datei);
    if (alle) Mitglieder_prüfen(*alle, eingabe.datei);

    Prüfplatz p;
    p.platz.Backuppfad = p.platz.Datenpfad + u"Backups/";
    const Text punkt = p.platz.Backuppfad + u"261116 120000 T.dat";
    p.fs.schreibe(punkt, eingabe.datei);
    p.fs.schreibe(p.daten(u"alt.dat"), "alt");
    Abbild erwartet = p.fs.platte().abbild();
    Wiederherstellung wieder(p.kanal, p.platz);
    Backups backups(p.kanal, p.platz, p.konfig, p.log);
    Ordnerersatz ersatz(p.kanal, p.platz, wieder, backups, p.log);
    const auto container = wieder.lesen(punkt);
    fordere(container.has_value() == alle.has_value(), "taken and refused alike");
    fordere(!container || ersatz.Datenordner_ersetzen(*container), "not put in place");
    if (alle) erwartet.erase(p.daten(u"alt.dat"));
    for (const Containermitglied& m : alle.value_or(std::vector<Containermitglied>{}))
        erwartet[(m.Log() ? p.platz.Logpfad : p.platz.Datenpfad) + m.name] = m.bytes;
    fordere(p.fs.platte().abbild() == erwartet, "another state than the container's");
    fordere(p.fs.offene() == 0, "a handle stayed open");
}

} // namespace kalvora::fuzz
