#include "files/ordner.h"

#include <algorithm>

namespace kalvora {

namespace {

TextView ohne_Schlusstrenner(TextView pfad) {
    if (!pfad.empty() && (pfad.back() == u'/' || pfad.back() == u'\\')) pfad.remove_suffix(1);
    return pfad;
}

Text ersetzt(TextView text, char16_t von, char16_t nach) {
    Text aus(text);
    std::replace(aus.begin(), aus.end(), von, nach);
    return aus;
}

[[noreturn]] void Ordnerfehler(TextView anfang, TextView pfad, TextView ende, TextView vermutung, int länge) {
    throw Programmabbruch(u"modKalvora - Ordner",
                          Text(anfang) + Pfad_kürzen(pfad, länge) + Text(ende) + u"\n" + Text(vermutung),
                          u"NoLog");
}

// A network that is gone is no matter of rights: the start waits for it.
void Netz_prüfen(FileSystem& fs, const Text& pfad) {
    if (fs.info(pfad).nummer() == FEHLER_NETZ)
        throw Laufzeitfehler(FEHLER_NETZ,
                             u"Der Ordner " + Pfad_kürzen(pfad, 100) + u" ist nicht zu erreichen");
}

// Where more is known than the presumption in the message, a paragraph behind it.
Text Ursache_des_Scheiterns(FileSystem& fs, const Text& pfad, Fehlercode f) {
    if (Datei_vorhanden(fs, Text(ohne_Schlusstrenner(pfad))))
        return u".\n\nAn der Stelle dieses Ordners steht eine Datei. Benennen Sie die Datei um, und starten "
               u"Sie das Programm dann neu.";
    if (f == FEHLER_ORDNER)
        return u".\n\nDer Ordner " + Pfad_kürzen(ParentDir(pfad), 100) +
               u" ist nicht vorhanden oder zurzeit nicht erreichbar.";
    return f == FEHLER_VOLL ? u".\n\n" + Text(Fehlerursache(f)) + u"." : Text();
}

} // namespace

Text ParentDir(TextView pfad) {
    if (pfad.empty()) return {};
    const size_t trenner = pfad.substr(0, pfad.size() - 1).find_last_of(u"/\\");
    return trenner == TextView::npos ? Text() : Text(pfad.substr(0, trenner + 1));
}

Text Dateiname_aus_Pfad(TextView pfad) {
    pfad = ohne_Schlusstrenner(pfad);
    const size_t trenner = pfad.find_last_of(u"/\\");
    return Text(trenner == TextView::npos ? pfad : pfad.substr(trenner + 1));
}

Text Pfad_kürzen(TextView pfad, int max) {
    pfad = ohne_Schlusstrenner(pfad);
    if (static_cast<int>(pfad.size()) <= max) return u"'" + Text(pfad) + u"'";
    const int hälfte = (max - 10) / 2;
    return u"'" + Text(links(pfad, hälfte)) + u" ... " + Text(rechts(pfad, hälfte)) + u"'";
}

Text als_Ordner(Text pfad) {
    if (!pfad.empty() && pfad.back() != u'/') pfad += u'/';
    return pfad;
}

Text Pfad_nativ(TextView gespeichert) {
    return ersetzt(gespeichert, u'\\', u'/');
}

Text Pfad_gespeichert(TextView nativ) {
    return ersetzt(nativ, u'/', u'\\');
}

std::vector<Text> Dateien(FileSystem& fs, const Text& ordner, TextView maske, bool fehlend_ist_leer) {
    auto namen = fs.list(ordner);
    if (!namen) {
        const bool fehlt = namen.nummer() == FEHLER_ORDNER || namen.nummer() == FEHLER_NICHT_GEFUNDEN;
        if (fehlend_ist_leer && fehlt) return {};
        throw Laufzeitfehler(namen.nummer(),
                             u"Der Ordner " + Pfad_kürzen(ordner, 100) + u" kann nicht gelesen werden",
                             ordner);
    }
    std::erase_if(*namen,
                  [&](const Text& name) { return name.starts_with(u'.') || !passt_auf_Maske(name, maske); });
    return std::move(*namen);
}

bool Datei_passend_vorhanden(FileSystem& fs, const Text& ordner, TextView maske) {
    return !Dateien(fs, ordner, maske, true).empty();
}

Text Datei_finden(FileSystem& fs, const Text& ordner, const Text& name) {
    if (fs.info(ordner + name).nummer() != FEHLER_NICHT_GEFUNDEN) return ordner + name;
    const auto namen = fs.list(ordner);
    if (namen)
        for (const Text& da : *namen)
            if (gleich_ohne_Fall(da, name)) return ordner + da;
    return ordner + name;
}

bool beide_gelistet(FileSystem& fs, const Text& ordner, const Text& name, const Text& anderer) {
    const auto namen = fs.list(ordner);
    const auto steht_da = [&](const Text& n) {
        return std::find(namen->begin(), namen->end(), n) != namen->end();
    };
    return namen && name != anderer && steht_da(name) && steht_da(anderer);
}

void Schreibweise_entfernen(FileSystem& fs, const Text& alte, const Text& gültige) {
    if (alte == gültige) return;
    if (beide_gelistet(fs, ParentDir(alte), Dateiname_aus_Pfad(alte), Dateiname_aus_Pfad(gültige)))
        (void)fs.remove(alte);
}

Laufzeitfehler Zugriffsfehler(int nummer, const Text& pfad) {
    return {nummer, u"Fehler beim Dateizugriff auf " + Pfad_kürzen(pfad, 100), pfad};
}

void Ordner_anlegen(FileSystem& fs, const Text& pfad, int länge) {
    Netz_prüfen(fs, pfad);
    Fehlercode f = 0;
    if (!Ordner_vorhanden(fs, pfad)) f = fs.make_folder(pfad); // somebody else may be doing the same
    if (Ordner_vorhanden(fs, pfad) && fs.change_folder(pfad) == 0) return;
    const Text vermutung = u"Vermutlich haben Sie keine ausreichenden Zugriffsberechtigungen";
    Ordnerfehler(u"Der Ordner ", pfad, u" konnte nicht angelegt werden.",
                 vermutung + Ursache_des_Scheiterns(fs, pfad, f), länge);
}

void Ordnerkette_anlegen(FileSystem& fs, const Text& pfad) {
    const Text eltern = ParentDir(pfad);
    if (!eltern.empty() && eltern != u"/" && !Ordner_vorhanden(fs, eltern)) Ordnerkette_anlegen(fs, eltern);
    Ordner_anlegen(fs, pfad);
}

void Ordner_wechseln(FileSystem& fs, const Text& pfad, int länge) {
    if (fs.change_folder(pfad) == 0) return;
    Netz_prüfen(fs, pfad);
    Ordnerfehler(u"Auf den Ordner ", pfad, u" konnte nicht zugegriffen werden.",
                 u"Vermutlich ist der Ordner nicht vorhanden oder Sie haben keine ausreichenden "
                 u"Zugriffsberechtigungen in diesem Ordner",
                 länge);
}

void Datei_löschen(FileSystem& fs, const Text& pfad, const Text& temppfad) {
    if (!Ordner_vorhanden(fs, pfad)) {
        (void)fs.remove(pfad);
        return;
    }
    if (!temppfad.empty() && fs.current_folder().starts_with(als_Ordner(pfad)))
        (void)fs.change_folder(temppfad);
    (void)fs.remove_folder(pfad);
}

bool Dateien_löschen(FileSystem& fs, const Text& ordner, TextView maske) {
    for (const Text& name : Dateien(fs, als_Ordner(ordner), maske, true))
        Datei_löschen(fs, als_Ordner(ordner) + name);
    return !Datei_passend_vorhanden(fs, als_Ordner(ordner), maske);
}

} // namespace kalvora
