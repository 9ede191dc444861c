#include "ui/konsole/konsole.h"

#include <utility>

namespace kalvora {

void Zeilenübergabe::warten_auf(Zug zug, std::unique_lock<std::mutex>& sperre) {
    wechsel_.wait(sperre, [&] { return zug_ == zug; });
}

void Zeilenübergabe::übergeben(Zug zug) {
    zug_ = zug;
    wechsel_.notify_all();
}

std::optional<std::string> Zeilenübergabe::nächste() {
    std::unique_lock sperre(mutex_);
    if (zu_Ende_) return std::nullopt;
    if (!zeile_) {
        übergeben(Zug::Aufrufer);
        warten_auf(Zug::Programm, sperre);
    }
    return std::exchange(zeile_, std::nullopt);
}

void Zeilenübergabe::anfangen() {
    std::unique_lock sperre(mutex_);
    warten_auf(Zug::Programm, sperre);
}

void Zeilenübergabe::aufhören() {
    const std::unique_lock sperre(mutex_);
    läuft_ = false;
    zeile_.reset();
    übergeben(Zug::Aufrufer);
}

void Zeilenübergabe::weiter(std::optional<std::string> zeile) {
    std::unique_lock sperre(mutex_);
    if (!läuft_) return;
    if (!zeile) zu_Ende_ = true;
    zeile_ = std::move(zeile);
    Programm_laufen_lassen(sperre);
}

void Zeilenübergabe::los() {
    std::unique_lock sperre(mutex_);
    Programm_laufen_lassen(sperre);
}

void Zeilenübergabe::Programm_laufen_lassen(std::unique_lock<std::mutex>& sperre) {
    übergeben(Zug::Programm);
    warten_auf(Zug::Aufrufer, sperre);
}

bool Zeilenübergabe::läuft() {
    const std::unique_lock sperre(mutex_);
    return läuft_;
}

Konsole::Konsole(Clock& uhr, Programmlauf lauf)
    : protokoll_([this](std::string_view zeile) { neues_ += zeile; }), uhr_(uhr),
      system_(protokoll_, übergabe_, uhr_), lauf_(std::move(lauf)) {}

Konsole::~Konsole() {
    if (!thread_.joinable()) return;
    übergabe_.weiter(std::nullopt);
    thread_.join();
}

void Konsole::laufen() {
    übergabe_.anfangen();
    try {
        lauf_(system_, uhr_);
        system_.abschließen();
    } catch (...) {
        fehler_ = std::current_exception();
    }
    übergabe_.aufhören();
}

std::string Konsole::neues() {
    if (fehler_) std::rethrow_exception(std::exchange(fehler_, nullptr));
    return std::exchange(neues_, {});
}

std::string Konsole::start() {
    if (thread_.joinable()) return {};
    thread_ = std::thread([this] { laufen(); });
    übergabe_.los();
    return neues();
}

std::string Konsole::execute(std::string_view zeile) {
    if (thread_.joinable()) übergabe_.weiter(std::string(zeile));
    return neues();
}

std::string Konsole::ende() {
    if (thread_.joinable()) übergabe_.weiter(std::nullopt);
    return neues();
}

} // namespace kalvora
