#include "safety/ersatzamt.h"

#include <algorithm>
#include <utility>

#include "files/ordner.h"
#include "plan/programmsperre.h"

namespace kalvora {

namespace {

constexpr TextView ENDUNG = u".inhaber";
constexpr double RUNDE = 1, ZEICHEN_ALLE = 5; // seconds
// Longer than a share is silent to a living process. Looks are counted, not seconds: clocks of two machines
// need not agree.
constexpr int STILLE = 60;
constexpr int GEDULD = 180;

Text Rechner(TextView kennung) {
    return Text(kennung.substr(0, std::min(kennung.rfind(u'-'), kennung.size())));
}

} // namespace

Text Ersatzamt::Pfad(int nummer) const {
    return platz_.Backuppfad + u"." + Text(REDOKOPIE) + u"." + ziffern(nummer) + Text(ENDUNG);
}

std::vector<int> Ersatzamt::Nummern() const {
    const auto namen = kanal_.fs().list(platz_.Backuppfad);
    if (!namen) throw Zugriffsfehler(namen.nummer(), platz_.Backuppfad);
    const Text anfang = u"." + Text(REDOKOPIE) + u".";
    std::vector<int> alle;
    for (const Text& name : *namen) {
        if (!name.starts_with(anfang) || !name.ends_with(ENDUNG)) continue;
        const Text nummer = name.substr(anfang.size(), name.size() - anfang.size() - ENDUNG.size());
        if (nur_Ziffern(nummer)) alle.push_back(static_cast<int>(Val(nummer)));
    }
    std::sort(alle.begin(), alle.end());
    return alle;
}

// Of one that cannot be read now only the number is known. A share may remember an older listing: the numbers
// behind it are asked for by name.
std::optional<Ersatzamt::Träger> Ersatzamt::höchster() const {
    const std::vector<int> alle = Nummern();
    int nummer = alle.empty() ? 0 : alle.back();
    while (Datei_vorhanden(kanal_.fs(), Pfad(nummer + 1)))
        ++nummer;
    if (nummer == 0) return std::nullopt;
    const auto inhalt = kanal_.werk().lesen(Pfad(nummer));
    if (inhalt.nummer() == FEHLER_NETZ) throw Zugriffsfehler(FEHLER_NETZ, platz_.Backuppfad);
    if (!inhalt) return Träger{nummer, {}, {}};
    return Träger{nummer, inhalt->info, aus_utf8(inhalt->sicht())};
}

// Of two processes of one user on one machine with the same folder of his own only one runs: the other one
// was ended.
bool Ersatzamt::eigener_Vorgänger(const Text& inhalt) const {
    auto teile = teilen(inhalt.substr(0, inhalt.find(u'\r')), u'|');
    teile.resize(std::max<std::size_t>(teile.size(), 4));
    return Rechner(teile[0]) == Rechner(kanal_.werk().kennung()) && teile[2] == platz_.Benutzername &&
           teile[3] == platz_.Systempfad;
}

// False: somebody was faster.
bool Ersatzamt::eintragen(int nummer) {
    const Text zeit = FormatZeit(kanal_.werk().uhr().now());
    eintrag_ = zu_utf8(kanal_.werk().kennung() + u"|" + zeit + u"|" + platz_.Benutzername + u"|" +
                       platz_.Systempfad + u"\r\n");
    const auto neu = kanal_.werk().neu_anlegen(Pfad(nummer), eintrag_);
    if (!neu && neu.nummer() != FEHLER_EXISTIERT) throw Zugriffsfehler(neu.nummer(), Pfad(nummer));
    if (neu) nummer_ = nummer;
    zeichen_ = kanal_.werk().uhr().steady();
    return static_cast<bool>(neu);
}

Ersatzamt::Antritt Ersatzamt::antreten(bool geduldig, const std::function<bool()>& nötig) {
    struct Anzeige {
        Application& app;
        bool steht = false;
        ~Anzeige() {
            if (steht) app.Vorgang({});
        }
    } anzeige{kanal_.app()};
    Träger vorher;
    for (int runde = 0, still = 0; runde < GEDULD; ++runde) {
        const auto da = höchster();
        const bool frei = !da || still >= STILLE || eigener_Vorgänger(da->inhalt);
        if (frei && eintragen(da ? da->nummer + 1 : 1)) return Antritt::angetreten;
        if (frei) { // somebody was faster
            kanal_.app().Pause(RUNDE);
            continue;
        }
        const bool lebt = da->nummer != vorher.nummer || da->info.size != vorher.info.size ||
                          da->info.time != vorher.info.time;
        if (lebt && vorher.nummer > 0 && !geduldig) return Antritt::vergeben;
        still = lebt ? 0 : still + 1;
        vorher = *da;
        const auto teile = teilen(da->inhalt, u'|');
        if (teile.size() > 2) wer_ = u"'" + teile[2] + u"' auf Rechner " + Rechner(teile[0]);
        kanal_.app().Vorgang(u"Datenordner wird auf einem anderen Arbeitsplatz wiederhergestellt" +
                             (wer_.empty() ? Text() : u" (" + wer_ + u")") + u". Bitte warten ...");
        anzeige.steht = true;
        kanal_.app().Pause(RUNDE);
        if (!nötig()) return Antritt::erledigt;
    }
    return Antritt::vergeben;
}

bool Ersatzamt::gilt() const {
    if (nummer_ == 0) return false;
    const auto inhalt = kanal_.werk().lesen(Pfad(nummer_));
    if (!inhalt && inhalt.nummer() != FEHLER_NICHT_GEFUNDEN)
        throw Zugriffsfehler(inhalt.nummer(), Pfad(nummer_));
    return inhalt && inhalt->sicht().starts_with(eintrag_) &&
           !Datei_vorhanden(kanal_.fs(), Pfad(nummer_ + 1));
}

// It grows: every look at it sees that, whatever the clocks say. A sign that fails is made up for by the
// next.
void Ersatzamt::Lebenszeichen() {
    const double jetzt = kanal_.werk().uhr().steady();
    if (nummer_ == 0 || jetzt - zeichen_ < ZEICHEN_ALLE) return;
    zeichen_ = jetzt;
    (void)kanal_.werk().anhängen(Pfad(nummer_), ".\r\n", true);
}

// From the lowest on: a former holder who wakes up must not find his own as the highest. What cannot be
// removed is a dead holder's to whoever comes next.
void Ersatzamt::niederlegen() {
    if (nummer_ == 0) return;
    const int eigene = std::exchange(nummer_, 0);
    const auto inhalt = kanal_.werk().lesen(Pfad(eigene));
    if (!inhalt || !inhalt->sicht().starts_with(eintrag_)) return; // relieved, and done without this one
    try {
        for (const int nummer : Nummern())
            if (nummer < eigene) (void)kanal_.fs().remove(Pfad(nummer));
    } catch (const Laufzeitfehler&) { // NOLINT(bugprone-empty-catch): they stay for the next holder
    }
    (void)kanal_.fs().remove(Pfad(eigene));
}

} // namespace kalvora
