// The program as the windowing system sees it: messages and questions, the busy counter, and the one border
// through which every event enters the logic. An exception is caught at the border, remembered, ends the
// loops, and is thrown again behind each of them, so that nothing is ever thrown across the toolkit and no
// caller runs on behind a modal window after a failure.
#pragma once

#include "platform/window/form.h"

namespace kalvora {

enum class Antwort { Ja, Nein, Abbrechen };
enum class Fragesymbol { Frage, Warnung };
enum class Mauszeiger { Standard, Pfeil, Sanduhr };

struct Frageart {
    Fragesymbol symbol = Fragesymbol::Warnung;
    bool mit_Abbrechen = false;
    Antwort vorgabe = Antwort::Nein;
};

// A front end. Its loops return when quit() was called.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;
    virtual void open(Form&) = 0;      // builds the view, attaches and shows it
    virtual void close(Form&) = 0;     // takes the view away again
    virtual void run(Form& main) = 0;  // until the window was closed or quit
    virtual void run_modal(Form&) = 0; // the same for a nested window
    virtual void quit() = 0;
    virtual void message(const Text& text) = 0; // beep, warning sign, title "Kalvora", OK
    virtual Antwort question(const Text& text, const Frageart& art) = 0;
    // A line of text; nothing when it was cancelled.
    virtual std::optional<Text> input(const Text& prompt, const Text& title, const Text& preset);
    virtual void process_events() = 0;
    virtual void wait(double seconds) = 0; // staying responsive
    // The same while the user may operate this window, which waits in a loop of the program.
    virtual void wait_in(Form&, double seconds) { wait(seconds); }
    // What a waiting program is at, for a front end whose windows nobody sees.
    virtual void status(const Text&) {}
    virtual void beep() = 0;
    virtual void set_pointer(Mauszeiger) = 0;
    virtual bool active(const Form&) = 0; // is it the window in front?
};

class Application {
public:
    explicit Application(WindowSystem& windows) : windows_(windows) {}
    WindowSystem& windows() { return windows_; }

    // The one message operation. The wait pointer rests meanwhile.
    void Hinweis(const Text& text);
    Antwort Frage(const Text& text, const Frageart& art = {});
    // The input box: `vorgabe` is "<text of the field>||<title>"; empty when it was cancelled.
    Text Eingabe(const Text& prompt, const Text& vorgabe);
    void Pause(double seconds); // lets events be handled, none of which reaches logic
    // Events of this window reach logic meanwhile, of no other; throws what one of them threw.
    void Pause_in(Form& form, double seconds);

    // --- telling that something lasts; nothing of it throws, and no event reaches logic
    // What the program is doing now ("Sicherung wird erstellt ... 40 %"); empty: nothing that lasts.
    void Vorgang(const Text& text);
    std::function<void(const Text&)> Vorgangsanzeige; // where the text stands; empty hides it
    // A file call lasts, for so many seconds by now: the window paints, the pointer says wait, from one
    // second on a text does. Warten_vorbei takes both back.
    void Warten_zeigen(double seconds);
    void Warten_vorbei();

    // --- windows
    void open(Form&);
    void close(Form&);
    void open_modal(Form&); // returns when it was closed; throws what an event in it threw
    void run(Form& main);   // the program's loop; throws what an event threw
    const std::vector<Form*>& forms() const { return forms_; } // outermost first
    Form* active_form() const { return forms_.empty() ? nullptr : forms_.back(); }

    // --- the border
    bool accepts(const Form&) const;
    bool event(Form&, const std::function<void()>& handler); // false: the program was busy
    bool busy() const { return busy_ > 0; }
    void check_error(); // throws what was remembered
    bool failed() const { return error_ != nullptr; }
    // How often the user or a pause held the program up: whoever measures time looks whether it grew.
    int interruptions() const { return interruptions_; }

    // --- wait pointer, for as long as a Sanduhrwache lives
    bool Sanduhr_an() const { return sanduhr_ > 0; }
    Mauszeiger pointer() const {
        return sanduhr_ > 0 || wartet_ ? Mauszeiger::Sanduhr : Mauszeiger::Standard;
    }

    // Shows the wait pointer for a scope, whichever way it is left; they are counted.
    class Sanduhrwache {
    public:
        Sanduhrwache(Application& app, bool an) : app_(an ? &app : nullptr) {
            if (app_) app_->Sanduhr(true);
        }
        ~Sanduhrwache() {
            if (app_) app_->Sanduhr(false);
        }
        Sanduhrwache(const Sanduhrwache&) = delete;
        Sanduhrwache& operator=(const Sanduhrwache&) = delete;

    private:
        Application* app_;
    };

private:
    class Beschäftigt;
    class Geöffnet;
    class Verschachtelt;
    class Zeigerruhe;
    template <class Dialog>
    auto fragen(Dialog&& dialog);
    void Sanduhr(bool an);
    void malen(const Text* text); // behind showing a text, if there is one

    WindowSystem& windows_;
    std::vector<Form*> forms_;
    int busy_ = 0;
    const Form* allein_ = nullptr; // the one window that Pause_in lets in
    int sanduhr_ = 0;
    Text vorgang_;
    bool wartet_ = false, wartetext_steht_ = false;
    int interruptions_ = 0;
    std::exception_ptr error_;
};

} // namespace kalvora
