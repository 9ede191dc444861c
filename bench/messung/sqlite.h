// A small hold on the database to compare with. Every failure ends the measurement.
#pragma once

#include <sqlite3.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace kalvora::bench {

class Datenbank {
public:
    explicit Datenbank(const std::string& pfad) { prüfen(sqlite3_open(pfad.c_str(), &db_)); }
    ~Datenbank() { sqlite3_close(db_); }
    Datenbank(const Datenbank&) = delete;
    Datenbank& operator=(const Datenbank&) = delete;
    void ausführen(const char* sql) { prüfen(sqlite3_exec(db_, sql, nullptr, nullptr, nullptr)); }
    sqlite3* griff() const { return db_; }
    void prüfen(int ergebnis) const {
        if (ergebnis != SQLITE_OK && ergebnis != SQLITE_DONE && ergebnis != SQLITE_ROW)
            throw std::runtime_error(sqlite3_errmsg(db_));
    }

private:
    sqlite3* db_ = nullptr;
};

class Anweisung {
public:
    Anweisung(Datenbank& db, const char* sql) : db_(db) {
        db_.prüfen(sqlite3_prepare_v2(db.griff(), sql, -1, &satz_, nullptr));
    }
    ~Anweisung() { sqlite3_finalize(satz_); }
    Anweisung(const Anweisung&) = delete;
    Anweisung& operator=(const Anweisung&) = delete;

    void binden(int nr, std::string_view text) {
        db_.prüfen(
            sqlite3_bind_text(satz_, nr, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT));
    }
    void binden(int nr, int zahl) { db_.prüfen(sqlite3_bind_int(satz_, nr, zahl)); }
    bool Zeile() { // true: a row stands ready
        const int ergebnis = sqlite3_step(satz_);
        db_.prüfen(ergebnis);
        return ergebnis == SQLITE_ROW;
    }
    void ausführen() {
        Zeile();
        db_.prüfen(sqlite3_reset(satz_));
    }
    std::string_view Text_in(int spalte) const {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(satz_, spalte));
        return {text, static_cast<std::size_t>(sqlite3_column_bytes(satz_, spalte))};
    }
    int Zahl_in(int spalte) const { return sqlite3_column_int(satz_, spalte); }

private:
    Datenbank& db_;
    sqlite3_stmt* satz_ = nullptr;
};

} // namespace kalvora::bench
