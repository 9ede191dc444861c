// The small widgets of the windows, as layout files name them.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTabBar>

namespace kalvora {

// A push button in colours of its own (the reasons); without colours an ordinary one.
class Farbknopf : public QPushButton {
    Q_OBJECT
public:
    explicit Farbknopf(QWidget* parent = nullptr);
    void set_colours(const QColor& fore, const QColor& back);
    void set_wish_width(int pixels); // 0: by its text
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QColor fore_, back_;
    int wish_ = 0;
};

// Flat tabs. Left and Right are announced, not acted upon.
class Reiter : public QTabBar {
    Q_OBJECT
public:
    explicit Reiter(QWidget* parent = nullptr);

signals:
    void arrow(int step);

protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void leaveEvent(QEvent*) override;
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }

private:
    void paint_tab(QPainter& painter, int index) const;
    int hover_ = -1;
};

// A text that is shortened in the middle where it does not fit; the tool tip then tells the whole.
class Kurzlabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    bool event(QEvent*) override;

private:
    bool is_cut() const;
};

// Its children stand side by side and go on in a further row where the width ends; hidden ones take no room.
class Flussleiste : public QWidget {
    Q_OBJECT
    // The last child stands at the right edge of its row; while it is hidden the others stay where they are.
    Q_PROPERTY(bool letztesRechts MEMBER last_right_)
    Q_PROPERTY(int abstand MEMBER gap_)
public:
    using QWidget::QWidget;
    void arrange();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent*) override;
    bool event(QEvent*) override;

private:
    bool last_right_ = false;
    int gap_ = 6;
};

// The floating box: a note over the window that lets the mouse through. Its label stands in its layout.
class Schwebefeld : public QWidget {
    Q_OBJECT
public:
    explicit Schwebefeld(QWidget* parent = nullptr);
    // Below `anchor` (coordinates of the parent), kept inside the parent.
    void place(const QRect& anchor);

protected:
    void paintEvent(QPaintEvent*) override;
};

// The picture side of the splash window.
class Startbild : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override;
};

} // namespace kalvora
