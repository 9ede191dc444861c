// One workstation that is driven line by line from outside, as a test does it: two of them in one process can
// take turns. The program runs on a thread of its own, but only ever one of the two sides runs: the program
// until it wants the next command, the caller otherwise. So a line that opens a modal window returns with
// that window open, and the next line goes to it.
#pragma once

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

// The line source whose lines are handed over one by one.
class Zeilenübergabe : public Zeilenquelle {
public:
    // --- the program's side
    std::optional<std::string> nächste() override; // waits for a line
    void anfangen();                               // waits for the first turn
    void aufhören();                               // no more lines will be taken

    // --- the caller's side: each returns when the program wants the next line or is over
    void los();                                    // the first turn
    void weiter(std::optional<std::string> zeile); // nothing: the input is at its end, now and from now on
    bool läuft();

private:
    enum class Zug { Aufrufer, Programm };
    void warten_auf(Zug zug, std::unique_lock<std::mutex>& sperre);
    void übergeben(Zug zug);
    void Programm_laufen_lassen(std::unique_lock<std::mutex>& sperre);

    std::mutex mutex_;
    std::condition_variable wechsel_;
    Zug zug_ = Zug::Aufrufer;
    std::optional<std::string> zeile_;
    bool zu_Ende_ = false, läuft_ = true;
};

class Konsole {
public:
    // Runs the whole program against the windowing system and the script clock, and returns at its end.
    using Programmlauf = std::function<void(KonsolenFenstersystem&, Skriptuhr&)>;
    // The clock gives the start of the simulated time; it must live as long as this.
    Konsole(Clock& uhr, Programmlauf lauf);
    ~Konsole(); // ends the input and waits for the program's end
    Konsole(const Konsole&) = delete;
    Konsole& operator=(const Konsole&) = delete;

    // Each returns the transcript that came about since the call before (UTF-8, whole lines) and throws what
    // the program threw.
    std::string start();                         // until the program waits for its first command
    std::string execute(std::string_view zeile); // one line, not ended; without effect behind the end
    std::string ende();                          // of the input, until the program has ended
    bool läuft() { return thread_.joinable() && übergabe_.läuft(); }
    int Fehlerzahl() const { return protokoll_.Fehlerzahl(); }

private:
    void laufen();
    std::string neues(); // of the transcript

    std::string neues_;
    Protokoll protokoll_;
    Zeilenübergabe übergabe_;
    Skriptuhr uhr_;
    KonsolenFenstersystem system_;
    Programmlauf lauf_;
    std::exception_ptr fehler_;
    std::thread thread_;
};

} // namespace kalvora
