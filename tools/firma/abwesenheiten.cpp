#include "firma/abwesenheiten.h"

#include <algorithm>

#include "files/monatsdaten.h"

namespace kalvora::firma {

namespace {

constexpr TextView ZU_URLAUB[] = {u"Vertretung: Empfang", u"nur telefonisch erreichbar",
                                  u"Sommerurlaub",        u"genehmigt von der Abteilungsleitung",
                                  u"Rückkehr abends",     u"Familienfest"};
constexpr TextView ZU_REISE[] = {
    u"Kunde in Zürich",     u"Messe Köln",        u"Baustelle Göteborg",           u"Schulung in München",
    u"Lieferant in Kraków", u"Werk Süd, Halle 3", u"Abnahme – Rückreise am Abend", u"Reisekosten 250 €"};
constexpr TextView ZU_KRANK[] = {u"AU liegt vor", u"Kind krank", u"bis auf Weiteres"};
constexpr TextView ZU_SONSTIGEM[] = {u"Umzug",    u"Arzttermin", u"Fortbildung", u"Behördengang",
                                     u"Hochzeit", u"Prüfung",    u"Betriebsrat"};

// Fills the days of one person.
class Planer {
public:
    Planer(Person& p, const Kalender& kalender, const Konfiguration& k, const Firmenwunsch& wunsch)
        : p_(p), kalender_(kalender), k_(k), heute_(wunsch.Heute) {
        aus_.codes.assign(static_cast<std::size_t>(kalender.Tage()), u' ');
    }

    void freie_Wochentage() {
        if (p_.freier_Wochentag == 0) return;
        for (Datum d = p_.Eintritt; d <= p_.Austritt; ++d)
            if (Wochentag(d) == p_.freier_Wochentag && kalender_.Arbeitstag(d))
                code(d) = k_.SFHex(k_.U() + 1);
    }

    void Urlaubsjahr(int jahr) {
        int rest = p_.Urlaubstage - p_.zufall.unter(5);
        rest -= Urlaub(Sommeranfang(jahr), p_.zufall.zwischen(2, 3) * 5, 30);
        if (p_.zufall.prozent(60)) rest -= Urlaub(Datum_aus(jahr, 12, p_.zufall.zwischen(20, 24)), 4, 30);
        if (p_.zufall.prozent(55))
            rest -= Urlaub(Osterdatum(jahr) + p_.zufall.zwischen(-13, 60), p_.zufall.zwischen(3, 5), 20);
        if (p_.zufall.prozent(45))
            rest -= Urlaub(Datum_aus(jahr, 10, p_.zufall.zwischen(1, 25)), p_.zufall.zwischen(3, 5), 20);
        if (p_.zufall.prozent(40)) rest -= Urlaub(Osterdatum(jahr) + 40, 1, 15); // behind Ascension Day
        while (rest > 0)
            rest -= p_.zufall.prozent(15) ? halber_Tag(jahr)
                                          : Urlaub(irgendwann(jahr), p_.zufall.zwischen(1, 2), 5);
    }

    void Krankheiten(int jahr) {
        for (int mal = p_.zufall.unter(5); mal > 0; --mal) {
            const Datum von = irgendwann(jahr);
            const int tage = p_.zufall.prozent(10) ? p_.zufall.zwischen(8, 20) : p_.zufall.zwischen(1, 5);
            if (von > heute_) continue;
            eintragen(nummer(u'K'), von, tage, von, p_.zufall.prozent(15) ? p_.zufall.aus(ZU_KRANK) : u"");
        }
    }

    void Reisen(int jahr) {
        for (int mal = p_.reist ? p_.zufall.zwischen(4, 14) : 0; mal > 0; --mal) {
            const Datum von = irgendwann(jahr), gebucht = von - p_.zufall.zwischen(2, 45);
            const int tage = p_.zufall.zwischen(1, 4);
            eintragen(nummer(u'D'), von, tage, gebucht,
                      p_.zufall.prozent(45) ? p_.zufall.aus(ZU_REISE) : u"");
        }
    }

    void Einzeltage(int jahr) {
        for (int mal = p_.zufall.unter(5); mal > 0; --mal) {
            const Datum von = irgendwann(jahr);
            eintragen(nummer(u'Z'), von, 1, von - p_.zufall.zwischen(0, 14), u"");
        }
        for (int mal = p_.zufall.unter(3); mal > 0; --mal) {
            const Datum von = irgendwann(jahr);
            eintragen(nummer(u'S'), von, 1, von - p_.zufall.zwischen(0, 20),
                      p_.zufall.prozent(75) ? p_.zufall.aus(ZU_SONSTIGEM) : u"");
        }
    }

    // A day in every month that is still empty, past or to come.
    void Lücken_füllen() {
        for (int monat = 1; monat <= MONATE; ++monat) {
            const Datum von = Datum_aus(kalender_.Startjahr(), monat, 1);
            const Datum nach = Datum_aus(kalender_.Startjahr(), monat + 1, 1);
            bool leer = true;
            for (Datum d = von; d < nach; ++d)
                leer = leer && code(d) == u' ';
            if (leer) eintragen(nummer(u'Z'), von + p_.zufall.unter(20), 1, std::min(von, heute_), u"");
        }
    }

    Abwesenheiten fertig() { return std::move(aus_); }

private:
    int nummer(char16_t Kennbuchstabe) const { return k_.Schaltflächen_Nummer(Kennbuchstabe); }
    char16_t& code(Datum d) { return aus_.codes[static_cast<std::size_t>(d - kalender_.erster())]; }
    Datum irgendwann(int jahr) { return Datum_aus(jahr, 1, 1) + p_.zufall.unter(365); }

    Datum Sommeranfang(int jahr) {
        if (!p_.Schulkinder) return Datum_aus(jahr, 5, 20) + p_.zufall.unter(120);
        for (const auto& [von, bis] : Schulferien(jahr))
            if (bis - von > 30) return von + p_.zufall.unter(25);
        return Datum_aus(jahr, 7, 1);
    }

    bool frei(Datum d) {
        return kalender_.Arbeitstag(d) && d >= p_.Eintritt && d <= p_.Austritt && code(d) == u' ';
    }

    // Up to `tage` working days from `von` on, ending before the first day with another entry. Returns how
    // many. What was not yet booked today does not stand there.
    int eintragen(int grund, Datum von, int tage, Datum gebucht, TextView kommentar) {
        if (grund == 0 || gebucht > heute_) return 0;
        Datum erster = 0, letzter = 0;
        int gesetzt = 0;
        for (Datum d = von; gesetzt < tage && d < von + 3 * tage + 7; ++d) {
            if (!kalender_.enthält(d)) break;
            if (!frei(d)) {
                if (gesetzt > 0 && code(d) != u' ' && code(d) != k_.SFHex(k_.U() + 1)) break;
                continue;
            }
            code(d) = k_.SFHex(grund);
            if (gesetzt++ == 0) erster = d;
            letzter = d;
        }
        if (gesetzt > 0) aus_.Vorgänge.push_back({grund, erster, letzter, gebucht, Text(kommentar)});
        return gesetzt;
    }

    // Counts as taken also when it lies too far ahead to be booked: nobody takes it elsewhere instead.
    int Urlaub(Datum von, int tage, int Vorlauf_Wochen) {
        const int Vorlauf = p_.zufall.zwischen(7, Vorlauf_Wochen * 7);
        const bool kommentiert = p_.zufall.prozent(8);
        const TextView kommentar = p_.zufall.aus(ZU_URLAUB);
        eintragen(nummer(u'U'), von, tage, von - Vorlauf, kommentiert ? kommentar : u"");
        return tage;
    }

    int halber_Tag(int jahr) {
        const Datum von = irgendwann(jahr);
        eintragen(nummer(u'½'), von, 1, von - p_.zufall.zwischen(0, 30), u"");
        return 1;
    }

    Person& p_;
    const Kalender& kalender_;
    const Konfiguration& k_;
    Datum heute_;
    Abwesenheiten aus_;
};

} // namespace

Kalender::Kalender(int Startjahr, const Feiertage& feiertage)
    : Startjahr_(Startjahr), erster_(Datum_aus(Startjahr, 1, 1)) {
    const Datum ende = Datum_aus(Startjahr + 3, 1, 1);
    for (Datum d = erster_; d < ende; ++d)
        arbeitstag_.push_back(Wochentag(d) < 6);
    for (const Text& eintrag : feiertage.Feiertagsliste) {
        const Datum d = FormatDatumSD(links(eintrag, 6));
        if (enthält(d)) arbeitstag_[static_cast<std::size_t>(d - erster_)] = 0;
    }
}

Abwesenheiten Abwesenheiten_bilden(Person& person, const Kalender& kalender, const Konfiguration& konfig,
                                   const Firmenwunsch& wunsch) {
    Planer planer(person, kalender, konfig, wunsch);
    planer.freie_Wochentage();
    for (int jahr = kalender.Startjahr(); jahr < kalender.Startjahr() + 3; ++jahr) {
        planer.Urlaubsjahr(jahr);
        planer.Krankheiten(jahr);
        planer.Reisen(jahr);
        planer.Einzeltage(jahr);
    }
    if (wunsch.Jeden_Monat_Einträge) planer.Lücken_füllen();
    return planer.fertig();
}

std::vector<std::pair<Datum, Datum>> Schulferien(int jahr) {
    const Datum ostern = Osterdatum(jahr);
    const Datum sommer = Datum_aus(jahr, 6, 22) + jahr * 11 % 35;
    const Datum februar = Datum_aus(jahr, 2, 1);
    const Datum winter = februar + (8 - Wochentag(februar)) % 7; // its first Monday
    return {{Datum_aus(jahr, 1, 1), Datum_aus(jahr, 1, 6)},
            {winter, winter + 4},
            {ostern - 13, ostern + 6},
            {ostern + 51, ostern + 55},
            {sommer, sommer + 42},
            {Datum_aus(jahr, 10, 12), Datum_aus(jahr, 10, 24)},
            {Datum_aus(jahr, 12, 22), Datum_aus(jahr, 12, 31)}};
}

} // namespace kalvora::firma
