#include "platform/window/application.h"

#include <algorithm>
#include <utility>

namespace kalvora {

class Application::Beschäftigt {
public:
    explicit Beschäftigt(Application& app) : app_(app) { ++app_.busy_; }
    ~Beschäftigt() { --app_.busy_; }
    Beschäftigt(const Beschäftigt&) = delete;
    Beschäftigt& operator=(const Beschäftigt&) = delete;

private:
    Application& app_;
};

// Events reach logic again although the program is busy, of all windows or of one alone; the outer state
// comes back however the scope is left.
class Application::Geöffnet {
public:
    Geöffnet(Application& app, const Form* allein)
        : app_(app), busy_(std::exchange(app.busy_, 0)), allein_(std::exchange(app.allein_, allein)) {}
    ~Geöffnet() {
        app_.busy_ = busy_;
        app_.allein_ = allein_;
    }
    Geöffnet(const Geöffnet&) = delete;
    Geöffnet& operator=(const Geöffnet&) = delete;

private:
    Application& app_;
    int busy_;
    const Form* allein_;
};

// A nested window has a busy counter of its own.
class Application::Verschachtelt {
public:
    Verschachtelt(Application& app, Form& form)
        : geöffnet_(app, nullptr), form_(form), was_modal_(form.modal()) {
        form.set_modal(true);
    }
    ~Verschachtelt() { form_.set_modal(was_modal_); }
    Verschachtelt(const Verschachtelt&) = delete;
    Verschachtelt& operator=(const Verschachtelt&) = delete;

private:
    Geöffnet geöffnet_;
    Form& form_;
    bool was_modal_;
};

// The wait pointer rests while the user is asked something.
class Application::Zeigerruhe {
public:
    explicit Zeigerruhe(Application& app) : app_(app) {
        if (app_.Sanduhr_an()) app_.windows_.set_pointer(Mauszeiger::Standard);
    }
    ~Zeigerruhe() { app_.windows_.set_pointer(app_.pointer()); }
    Zeigerruhe(const Zeigerruhe&) = delete;
    Zeigerruhe& operator=(const Zeigerruhe&) = delete;

private:
    Application& app_;
};

std::optional<Text> WindowSystem::input(const Text&, const Text&, const Text&) {
    return std::nullopt;
}

// What every dialog of the windowing system has around it.
template <class Dialog>
auto Application::fragen(Dialog&& dialog) {
    ++interruptions_;
    const Beschäftigt beschäftigt(*this);
    const auto antwort = [&] {
        const Zeigerruhe ruhe(*this);
        return dialog();
    }();
    check_error();
    return antwort;
}

void Application::Hinweis(const Text& text) {
    fragen([&] {
        windows_.message(text);
        return Antwort::Ja; // there is no other
    });
}

Antwort Application::Frage(const Text& text, const Frageart& art) {
    return fragen([&] { return windows_.question(text, art); });
}

Text Application::Eingabe(const Text& prompt, const Text& vorgabe) {
    const int trenner = position(vorgabe, u"||");
    const Text feld(trenner > 0 ? links(vorgabe, trenner - 1) : TextView(vorgabe));
    const Text titel(trenner > 0 ? mitte(vorgabe, trenner + 2) : TextView(u"Kalvora"));
    return fragen([&] { return windows_.input(prompt, titel, feld); }).value_or(Text());
}

void Application::Pause(double seconds) {
    ++interruptions_;
    Beschäftigt beschäftigt(*this);
    windows_.wait(seconds);
    check_error();
}

void Application::Pause_in(Form& form, double seconds) {
    ++interruptions_;
    {
        const Geöffnet geöffnet(*this, &form);
        windows_.wait_in(form, seconds);
    }
    check_error();
}

// --- telling that something lasts

namespace {

constexpr double TEXT_AB = 1.0; // seconds of one wait

} // namespace

void Application::malen(const Text* text) {
    const Beschäftigt beschäftigt(*this);
    try {
        if (text && Vorgangsanzeige) Vorgangsanzeige(*text);
        windows_.process_events();
    } catch (...) { // NOLINT(bugprone-empty-catch): no work fails because it could not be told of
    }
}

void Application::Vorgang(const Text& text) {
    vorgang_ = text;
    malen(&text);
}

void Application::Warten_zeigen(double seconds) {
    if (!std::exchange(wartet_, true)) windows_.set_pointer(pointer());
    const Text text = u"Der Datenordner antwortet nicht. Bitte warten ...";
    const bool text_fällig = seconds >= TEXT_AB && !std::exchange(wartetext_steht_, true);
    malen(text_fällig ? &text : nullptr);
}

void Application::Warten_vorbei() {
    wartet_ = false;
    windows_.set_pointer(pointer());
    if (std::exchange(wartetext_steht_, false)) malen(&vorgang_);
}

// --- windows

void Application::open(Form& form) {
    forms_.push_back(&form);
    try {
        windows_.open(form);
    } catch (...) { // a control that the layout does not have
        std::erase(forms_, &form);
        throw;
    }
}

void Application::close(Form& form) {
    const auto hit = std::find(forms_.begin(), forms_.end(), &form);
    if (hit == forms_.end()) return;
    forms_.erase(hit);
    windows_.close(form);
}

void Application::open_modal(Form& form) {
    try {
        const Verschachtelt nested(*this, form);
        open(form);
        check_error(); // an event that came while it opened has failed: its loop would have nobody to end it
        windows_.run_modal(form);
    } catch (...) {
        close(form);
        throw;
    }
    close(form);
    check_error();
}

void Application::run(Form& main) {
    check_error();
    windows_.run(main);
    check_error();
}

bool Application::accepts(const Form& form) const {
    if (busy_ > 0 || error_ || (allein_ && allein_ != &form)) return false;
    for (auto f = forms_.rbegin(); f != forms_.rend(); ++f) {
        if (*f == &form) return true;
        if ((*f)->modal()) return false;
    }
    return false;
}

bool Application::event(Form& form, const std::function<void()>& handler) {
    if (!accepts(form)) return false;
    Beschäftigt beschäftigt(*this);
    try {
        if (handler) handler();
    } catch (...) {
        error_ = std::current_exception();
        windows_.quit();
    }
    return true;
}

void Application::check_error() {
    if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
}

void Application::Sanduhr(bool an) {
    sanduhr_ += an ? 1 : -1;
    windows_.set_pointer(pointer());
}

} // namespace kalvora
