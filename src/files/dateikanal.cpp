#include "files/dateikanal.h"

#include <utility>

#include "base/cp1252.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr double LANGSAM_AB = 0.2; // seconds
constexpr double WARTEPAUSE = 1.5;
constexpr std::size_t SPEICHER_BEHALTEN = 1'000'000; // bytes

// What was left of a line when its writer ended, closed by the next append.
bool abgerissen(const Rohzeilen::Zeile& roh) {
    return roh.mit_Ende && roh.länge > 1 && roh.anfang[roh.länge - 1] == '\0' &&
           roh.anfang[roh.länge - 2] != '\0';
}

bool darf_leer_sein(const Text& pfad) {
    return endet_ohne_Fall(pfad, u".ini");
}

Laufzeitfehler zugriffsfehler(int nummer, const Text& pfad, TextView prozedur, int zeile = 0) {
    Laufzeitfehler fehler = Zugriffsfehler(nummer, pfad);
    fehler.prozedur = prozedur;
    fehler.zeile = zeile;
    return fehler;
}

// Where the number tells more than the presumption in the message, a paragraph behind it.
Text Ursache_des_Scheiterns(FileSystem& fs, const Text& pfad, int nummer) {
    if (nummer == FEHLER_NETZ || nummer == FEHLER_ORDNER)
        return u".\n\nDer Ordner " + Pfad_kürzen(ParentDir(pfad), 100) + u" ist zurzeit nicht erreichbar.";
    if (nummer == FEHLER_SCHREIBSCHUTZ && Ordner_vorhanden(fs, pfad))
        return u".\n\nAn der Stelle dieser Datei steht ein Ordner. Benennen Sie den Ordner um, und starten "
               u"Sie das Programm dann neu.";
    if (nummer == FEHLER_VERWEIGERT || nummer == FEHLER_SCHREIBSCHUTZ) return {};
    const Text ursache(Fehlerursache(nummer));
    return ursache.empty() ? Text() : u".\n\n" + ursache + u".";
}

} // namespace

bool Dateikanal::Datei_öffnen(const Text& pfad, Dateimodus modus, Fehlerweg weg) {
    letzte_datei_ = pfad;
    pfad_ = pfad;
    modus_ = modus;
    weg_ = weg;
    ausgabe_.clear();
    vorgefunden_.reset();
    zeile_nr_ = 0;
    try {
        if (modus == Dateimodus::Input)
            einlesen(pfad);
        else
            schreibprobe(pfad);
    } catch (const Laufzeitfehler& fehler) {
        verwerfen();
        letzte_datei_.clear();
        if (weg == Fehlerweg::IgnoreErrors) return false;
        öffnen_gescheitert(pfad, modus, fehler.nummer);
    }
    if (modus != Dateimodus::Input) Daten_geändert = true;
    offen_ = true;
    return true;
}

void Dateikanal::einlesen(const Text& pfad) {
    auto gelesen = werk_.lesen(pfad, std::exchange(speicher_, {}));
    if (gelesen && gelesen->größe == 0) {
        const Application::Sanduhrwache sanduhr(app_, true);
        app_.Pause(WARTEPAUSE);
        app_.Hinweis(
            u"Die Datei " + Pfad_kürzen(pfad, 100) +
            u" wird gerade von jemand anderem benutzt. Bitte einige Sekunden warten und dann fortsetzen.");
        app_.Pause(WARTEPAUSE);
        gelesen = werk_.lesen(pfad);
    }
    if (!gelesen) throw zugriffsfehler(gelesen.nummer(), pfad, u"modKalvora - Datei_öffnen");
    if (gelesen->größe == 0 && !Reparatursperre && !darf_leer_sein(pfad)) {
        Dateischaden leer(u"Die Datei " + Pfad_kürzen(pfad, 100) + u" ist leer.", pfad);
        leer.zweimal_gesehen = true;
        throw leer;
    }
    inhalt_ = std::move(*gelesen);
    stand_ = inhalt_.info;
    kopf_ = inhalt_.sicht().substr(0, KOPFBYTES);
    zeilen_.emplace(inhalt_.bytes.get(), inhalt_.größe);
    vorrat_.reset();
}

// Nothing is written before the close; that writing is allowed at all is found out here.
void Dateikanal::schreibprobe(const Text& pfad) {
    const auto da = fs().info(pfad);
    if (da && da->folder) throw zugriffsfehler(FEHLER_SCHREIBSCHUTZ, pfad, {});
    if (!da && da.nummer() != FEHLER_NICHT_GEFUNDEN) throw zugriffsfehler(da.nummer(), pfad, {});
    if (modus_ == Dateimodus::Fortsetzen) return; // whether it is still there, the close will tell
    if (!da || modus_ == Dateimodus::Neu) {
        if (!Ordner_vorhanden(fs(), ParentDir(pfad))) throw zugriffsfehler(FEHLER_ORDNER, pfad, {});
        return;
    }
    if (modus_ == Dateimodus::Append) return; // its one open at the close is the probe
    const auto h = fs().open(pfad, OpenMode::Append);
    if (!h) throw zugriffsfehler(h.nummer(), pfad, {});
    (void)fs().close(*h);
}

void Dateikanal::öffnen_gescheitert(const Text& pfad, Dateimodus modus, int nummer) const {
    const bool lesen = modus == Dateimodus::Input;
    const bool anhang = modus == Dateimodus::Append || modus == Dateimodus::Fortsetzen;
    const TextView name = lesen ? u"Input" : anhang ? u"Append" : u"Output";
    throw Zugriffsabbruch(
        nummer,
        u"Die Datei " + Pfad_kürzen(pfad, 100) +
            u" konnte nicht geöffnet werden.\n\nVermutlich haben Sie keine ausreichenden "
            u"Zugriffsberechtigungen für den "
            u"Ordner " +
            Pfad_kürzen(ParentDir(pfad), 100) + (lesen ? u"" : u", ist die Datei schreibgeschützt") +
            u" oder die Datei ist nicht vorhanden" + Ursache_des_Scheiterns(fs(), pfad, nummer),
        pfad, u"Fehler beim Dateizugriff auf " + Pfad_kürzen(pfad, 100) + u", Modus '" + Text(name) + u"'");
}

void Dateikanal::ganz_geschrieben(const FileInfo& stand) {
    stand_ = stand;
    kopf_ = ausgabe_.substr(0, KOPFBYTES);
    davor_ = 0;
}

Fehlercode Dateikanal::ausschreiben() {
    switch (modus_) {
    case Dateimodus::Output: {
        const Text andere = Datei_finden(fs(), ParentDir(pfad_), Dateiname_aus_Pfad(pfad_));
        const auto info = werk_.ersetzen(pfad_, ausgabe_, vorgefunden_ ? &*vorgefunden_ : nullptr);
        if (!info) return info.nummer();
        ganz_geschrieben(*info);
        Schreibweise_entfernen(fs(), andere, pfad_);
        return 0;
    }
    case Dateimodus::Neu: {
        const auto info = werk_.neu_anlegen(pfad_, ausgabe_);
        if (info) ganz_geschrieben(*info);
        return info.nummer();
    }
    case Dateimodus::Append:
    case Dateimodus::Fortsetzen: {
        if (ausgabe_.empty()) return 0;
        const auto anhang = werk_.anhängen(pfad_, ausgabe_, modus_ == Dateimodus::Fortsetzen);
        if (!anhang) return anhang.nummer();
        stand_ = anhang->info;
        davor_ = anhang->davor;
        kopf_ = anhang->kopf;
        angehängt_ = std::move(ausgabe_);
        return 0;
    }
    case Dateimodus::Input: return 0;
    }
    return 0;
}

Fehlercode Dateikanal::Datei_schließen() {
    if (!offen_) return 0;
    const double beginn = werk_.uhr().steady();
    const Fehlercode f = ausschreiben();
    const bool langsam = werk_.uhr().steady() - beginn > LANGSAM_AB;
    const Text pfad = pfad_;
    verwerfen();
    const bool vorgesehen = ((modus_ == Dateimodus::Neu || vorgefunden_) && f == FEHLER_EXISTIERT) ||
                            (modus_ == Dateimodus::Fortsetzen && f == FEHLER_NICHT_GEFUNDEN);
    if (!f || weg_ == Fehlerweg::IgnoreErrors || vorgesehen) {
        letzte_datei_.clear();
        if (langsam && bei_langsamem_Schließen) bei_langsamem_Schließen();
        return f;
    }
    if (modus_ != Dateimodus::Input) letzte_datei_.clear(); // nothing is being judged
    const bool nicht_offen = f == FEHLER_VERWEIGERT || f == FEHLER_SCHREIBSCHUTZ ||
                             f == FEHLER_NICHT_GEFUNDEN || f == FEHLER_ORDNER;
    if (nicht_offen) öffnen_gescheitert(pfad, modus_, f); // files are opened for writing here
    throw zugriffsfehler(f, pfad, u"modKalvora - Datei_schließen");
}

void Dateikanal::verwerfen() {
    offen_ = false;
    zeilen_.reset();
    vorrat_.reset();
    // A large file's memory goes; that of the many small ones is used again for the next.
    if (inhalt_.platz > 0 && inhalt_.platz <= SPEICHER_BEHALTEN) speicher_ = std::move(inhalt_);
    inhalt_ = {};
    ausgabe_.clear();
}

bool Dateikanal::nächste_bereit() {
    if (!vorrat_ && zeilen_) vorrat_ = zeilen_->nächste();
    return vorrat_.has_value();
}

bool Dateikanal::Dateiende() {
    return !nächste_bereit();
}

bool Dateikanal::letzte_Zeile_offen() {
    if (inhalt_.größe == 0) return false;
    return inhalt_.bytes[inhalt_.größe - 1] != '\n';
}

Text Dateikanal::LineIn() {
    if (!nächste_bereit())
        throw zugriffsfehler(FEHLER_DATEIENDE, pfad_, u"modKalvora - LineIn", zeile_nr_ + 1);
    const Rohzeilen::Zeile roh = *vorrat_;
    vorrat_.reset();
    ++zeile_nr_;
    if (roh.länge == 0) {
        if (endet_ohne_Fall(pfad_, u"Data.dat")) return {};
        Laufzeitfehler fehler(5, u"Leere Zeile in der Datei " + Pfad_kürzen(pfad_, 100), pfad_, zeile_nr_);
        fehler.prozedur = u"modKalvora - LineIn";
        throw fehler;
    }
    return aus_cp1252(Zeile_entschlüsseln(roh.anfang, roh.länge));
}

std::optional<Dateikanal::Klarzeile> Dateikanal::nächste_Klarzeile() {
    if (!zeilen_) return std::nullopt;
    auto roh = vorrat_ ? std::exchange(vorrat_, std::nullopt) : zeilen_->nächste();
    while (roh && abgerissen(*roh))
        roh = zeilen_->nächste();
    if (!roh) return std::nullopt;
    if (!roh->mit_Ende) {
        vorrat_ = roh;
        return std::nullopt;
    }
    ++zeile_nr_;
    const auto stelle = static_cast<std::uint64_t>(roh->anfang - inhalt_.bytes.get());
    if (roh->länge == 0) return Klarzeile{{}, stelle};
    return Klarzeile{Zeile_entschlüsseln(roh->anfang, roh->länge), stelle};
}

Text Dateikanal::Rohzeile() {
    if (!nächste_bereit())
        throw zugriffsfehler(FEHLER_DATEIENDE, pfad_, u"modKalvora - LineIn", zeile_nr_ + 1);
    const Rohzeilen::Zeile roh = *vorrat_;
    vorrat_.reset();
    ++zeile_nr_;
    return aus_cp1252({roh.anfang, roh.länge});
}

void Dateikanal::LineOut(TextView zeile) {
    Klarzeile_schreiben(zu_cp1252(zeile));
}

void Dateikanal::Klarzeile_schreiben(std::string_view bytes) {
    if (!offen_ || modus_ == Dateimodus::Input) throw zugriffsfehler(54, pfad_, u"modKalvora - LineOut");
    Zeile_verschlüsseln(ausgabe_, bytes, schlüssel_.nächster());
}

void Dateikanal::Rohzeile_schreiben(TextView zeile) {
    if (!offen_ || modus_ == Dateimodus::Input) throw zugriffsfehler(54, pfad_, u"modKalvora - LineOut");
    ausgabe_ += zu_cp1252(zeile) + "\r\n";
}

void Dateifehler(int art, const Text& datei, TextView kopf, TextView modul) {
    const Text pfad = Pfad_kürzen(datei, 100);
    const bool fehlt = art == 1 || art == 3;
    Text text = fehlt ? u"Die Datei " + pfad + u" wurde nicht gefunden."
                      : u"Der Dateiheader [" + Text(kopf) + u"] der Datei " + pfad + u" wurde nicht erkannt.";
    if (art <= 2) throw Dateischaden(text, datei);
    throw Programmabbruch(Text(modul),
                          text + u" Installieren Sie das Programm erneut, um dieses Problem zu beheben");
}

} // namespace kalvora
