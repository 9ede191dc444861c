#include "safety/container.h"

#include <algorithm>
#include <set>

#include "base/cp1252.h"
#include "files/versionsname.h"

namespace kalvora {

namespace {

constexpr TextView KOPF = u"[KalvoraBackup]";
constexpr std::size_t NAME_HÖCHSTENS = 120; // characters
constexpr std::size_t NAMENSBYTES_HÖCHSTENS =
    170;                                    // of the 255 that a folder takes; the sibling needs the rest
constexpr std::size_t KOPF_HÖCHSTENS = 150; // bytes of a member's two lines
constexpr std::size_t MITGLIEDER_HÖCHSTENS = 5000; // no company has a tenth of it

// Takes one stored line with its end off the front; nothing when there is none that is whole.
std::optional<std::string_view> Rohzeile(std::string_view& rest) {
    const std::size_t umbruch = rest.find('\n');
    if (umbruch == std::string_view::npos) return std::nullopt;
    const std::string_view zeile = rest.substr(0, umbruch + 1);
    rest.remove_prefix(umbruch + 1);
    return zeile;
}

// The next line as text, empty when it is missing or is no line.
Text Klarzeile(std::string_view& rest) {
    const auto roh = Rohzeile(rest);
    if (!roh) return {};
    std::string zeile(roh->substr(0, roh->size() - 1));
    if (zeile.ends_with('\r')) zeile.pop_back();
    if (zeile.empty()) return {};
    return aus_cp1252(Zeile_entschlüsseln(zeile.data(), zeile.size()));
}

std::optional<Text> in_Klammern(const Text& zeile) {
    if (zeile.size() < 3 || zeile.front() != u'[' || zeile.back() != u']') return std::nullopt;
    return zeile.substr(1, zeile.size() - 2);
}

// A count of lines: plain digits.
std::optional<std::size_t> Anzahl(const Text& text) {
    constexpr std::size_t STELLEN = 9;
    if (text.empty() || text.size() > STELLEN || !nur_Ziffern(text)) return std::nullopt;
    return static_cast<std::size_t>(Val(text));
}

std::optional<Containermitglied> Mitglied(std::string_view& rest) {
    const auto name = in_Klammern(Klarzeile(rest));
    const auto anzahl = in_Klammern(Klarzeile(rest));
    if (!name || !anzahl || !Mitgliedsname_zulässig(*name)) return std::nullopt;
    const auto zeilen = Anzahl(*anzahl);
    if (!zeilen) return std::nullopt;
    const std::string_view anfang = rest;
    for (std::size_t n = 0; n < *zeilen; ++n)
        if (!Rohzeile(rest)) return std::nullopt;
    return Containermitglied{*name, anfang.substr(0, anfang.size() - rest.size())};
}

// Lines whose ends a hole has not swallowed.
std::string ohne_NUL(std::string bytes) {
    Rohzeilen zeilen(bytes.data(), bytes.size());
    std::string aus;
    while (const auto zeile = zeilen.nächste()) {
        aus.append(zeile->anfang, zeile->länge);
        if (zeile->mit_Ende) aus += "\r\n";
    }
    return aus;
}

// A search by call for each line is ahead of a look at every byte.
std::ptrdiff_t Zeilenzahl(std::string_view bytes) {
    std::ptrdiff_t zahl = 0;
    for (std::size_t n = bytes.find('\n'); n != std::string_view::npos; n = bytes.find('\n', n + 1))
        ++zahl;
    return zahl;
}

// Is the file appended to?
bool wächst(TextView name) {
    return ist_Versionsname(name) || endet_ohne_Fall(name, u".log");
}

} // namespace

bool Mitgliedsname_zulässig(TextView name) {
    const bool art = endet_ohne_Fall(name, u".dat") || endet_ohne_Fall(name, u".log");
    const bool fremd = std::any_of(name.begin(), name.end(),
                                   [](char16_t c) { return c < 32 || c == u'/' || c == u'\\' || c == u':'; });
    return art && !fremd && name.size() <= NAME_HÖCHSTENS && name[0] != u'.' && name[0] != u'~' &&
           cp1252_darstellbar(name) && zu_utf8(name).size() <= NAMENSBYTES_HÖCHSTENS;
}

bool Containermitglied::Log() const {
    return !endet_ohne_Fall(name, u".dat");
}

Containerschreiber::Containerschreiber(Schlüsselquelle& schlüssel) : schlüssel_(schlüssel) {
    Zeile(KOPF);
}

void Containerschreiber::Zeile(TextView klar) {
    Zeile_verschlüsseln(bytes_, zu_cp1252(klar), schlüssel_.nächster());
}

void Containerschreiber::reservieren(std::size_t mitglieder, std::uint64_t bytes) {
    bytes_.reserve(bytes_.size() + mitglieder * KOPF_HÖCHSTENS + static_cast<std::size_t>(bytes));
}

void Containerschreiber::anfügen(TextView name, std::string_view bytes) {
    std::string ohne_Löcher;
    if (bytes.find('\0') != std::string_view::npos) bytes = ohne_Löcher = ohne_NUL(std::string(bytes));
    const std::string_view ganze = bytes.substr(0, bytes.rfind('\n') + 1); // npos + 1 is 0: no line is whole
    const bool geschnitten = ganze.size() < bytes.size() && !wächst(name);
    const auto zeilen = Zeilenzahl(ganze) + (geschnitten ? 2 : 0);
    Zeile(u"[" + Text(name) + u"]");
    Zeile(u"[" + ziffern(zeilen) + u"]");
    bytes_ += geschnitten ? bytes : ganze;
    if (geschnitten) bytes_ += "\r\n\r\n";
}

std::optional<std::vector<Containermitglied>> Container_lesen(std::string_view bytes) {
    if (Klarzeile(bytes) != KOPF) return std::nullopt;
    std::vector<Containermitglied> alle;
    std::set<Text> namen;
    while (!bytes.empty()) {
        auto mitglied = Mitglied(bytes);
        if (!mitglied || !namen.insert(klein(mitglied->name)).second) return std::nullopt;
        alle.push_back(*std::move(mitglied));
        if (alle.size() > MITGLIEDER_HÖCHSTENS) return std::nullopt;
    }
    if (alle.empty()) return std::nullopt;
    return alle;
}

} // namespace kalvora
