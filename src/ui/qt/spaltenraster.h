// Where the columns of a table lie. One raster is shared by the tables of a window that must stay aligned
// (calendar weeks, plan, day sums); the leading table's view lays it out. Columns count from 0, column 0
// stands fixed at the left, the others may be scrolled sideways. Lengths are device-independent pixels.
#pragma once

#include <QObject>
#include <vector>

namespace kalvora {

class Spaltenraster : public QObject {
    Q_OBJECT
public:
    // Wishes in pixels: -1 takes a share of what is left, 0 is hidden. A share is at least `mindest`.
    void anordnen(const std::vector<int>& wünsche, int breite, int mindest, int standard_fest);

    int spalten() const { return static_cast<int>(kanten_.size()) - 1; }
    int fest() const { return fest_; }     // width of the fixed column
    int breite() const { return breite_; } // of the view
    int inhalt() const;                    // width of all columns
    int breite(int spalte) const;          // 0 hidden
    int links(int spalte) const;           // on the screen, scrolled
    int rechts(int spalte) const { return links(spalte) + breite(spalte); }
    int spalte_bei(int x) const; // -1 right of all

    int versatz() const { return versatz_; }
    int höchster_versatz() const { return qMax(0, inhalt() - breite_); }
    void set_versatz(int versatz);

    int marked_col() const { return marked_col_; }
    void set_marked_col(int spalte);
    int last_day() const { return last_day_; } // the last column that is a day of the month
    bool week_start(int spalte) const;         // a week begins on it
    void set_month(int last_day, std::vector<bool> week_starts);

signals:
    void changed();

private:
    std::vector<bool> week_starts_;
    std::vector<int> kanten_{0}; // left edges unscrolled, and the right end
    int fest_ = 0, breite_ = 0, versatz_ = 0, marked_col_ = 0, last_day_ = 0;
};

} // namespace kalvora
