// Tells the measuring process when a widget was first painted, and ends the program then.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <functional>

class ErstesBild : public QObject {
public:
    // `gemeint` says whether that widget's paint event is the one waited for; `ende` ends the program.
    ErstesBild(std::function<bool(const QWidget&)> gemeint, std::function<void()> ende)
        : gemeint_(std::move(gemeint)), ende_(std::move(ende)) {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override {
        const auto* widget = ereignis->type() == QEvent::Paint ? qobject_cast<QWidget*>(objekt) : nullptr;
        if (!widget || !gemeint_(*widget)) return false;
        qApp->removeEventFilter(this);
        // Behind this event, so that the picture has been painted.
        QTimer::singleShot(0, this, [this] {
            std::putchar('!');
            std::fflush(stdout);
            ende_();
        });
        return false;
    }

private:
    std::function<bool(const QWidget&)> gemeint_;
    std::function<void()> ende_;
};
