#include "safety/bestand.h"

#include "files/ordner.h"
#include "safety/container.h"

namespace kalvora {

bool dieselbe(const Gesehen& a, const Gesehen& b) {
    return a.info.size == b.info.size && a.info.time == b.info.time && a.kopf == b.kopf;
}

Ergebnis<Gesehen> ansehen(FileSystem& fs, const Text& pfad) {
    using E = Ergebnis<Gesehen>;
    const auto h = fs.open(pfad, OpenMode::Read);
    if (!h) return E::fehler(h.nummer());
    const auto info = fs.info(*h);
    std::string kopf(KOPFBYTES, '\0');
    const auto n =
        info ? fs.read_at(*h, 0, kopf.data(), kopf.size()) : Ergebnis<std::size_t>::fehler(info.nummer());
    (void)fs.close(*h); // nothing was written: its result says nothing
    if (!n) return E::fehler(n.nummer());
    kopf.resize(*n);
    return Gesehen{*info, std::move(kopf)};
}

// The size is that of the bytes read: the file may have grown since it was opened.
Gesehen gesehen(const Dateiinhalt& inhalt) {
    Gesehen g{inhalt.info, std::string(inhalt.sicht().substr(0, KOPFBYTES))};
    g.info.size = inhalt.größe;
    return g;
}

std::vector<Text> Sicherungsgut(FileSystem& fs, const Arbeitsplatz& platz) {
    std::vector<Text> alle;
    const auto anfügen = [&](const Text& ordner, TextView maske) {
        for (const Text& name : Dateien(fs, ordner, maske, true))
            if (Mitgliedsname_zulässig(name) && !Ordner_vorhanden(fs, ordner + name))
                alle.push_back(ordner + name);
    };
    anfügen(platz.Datenpfad, u"*.dat");
    anfügen(platz.Logpfad, u"*.log");
    return alle;
}

} // namespace kalvora
