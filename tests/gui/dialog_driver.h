// Answers the plug-in's dialogs the way a user does: the real windows, from inside the modal loop
// that each of them runs.
//
//   Dialog_driver dialogs;
//   dialogs.answer_next({Reply::no});
//   exporter.can_export("/tmp/x.fx");          // shows the question and returns after the answer
//   dialogs.shown().back().text                // what the user saw
//
// A timer of the toolkit looks for a dialog, waits until it is on the screen and has loaded its
// folder, notes what it shows, does what its answer says, waits until that has taken effect, and
// responds. Nothing waits for a fixed time. What takes longer than half a minute, and a dialog that
// no answer is left for, is closed and becomes a complaint.
#ifndef TESTS_GUI_DIALOG_DRIVER_H
#define TESTS_GUI_DIALOG_DRIVER_H

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

enum class Reply {
    ok,           // the buttons of message boxes
    yes,          //
    no,           //
    accept,       // the buttons of file dialogs
    cancel,       //
    close_window, // the window's close button
    escape_key,   // real keys
    return_key,   //
};

struct Dialog_answer {
    Reply reply;

    // File dialogs only. A filter is chosen before names, names are typed, files are selected.
    int filter = -1;                     // by its position; -1 leaves it as it is
    std::string name = {};               // of a save dialog; empty leaves it as it is
    std::vector<std::string> files = {}; // of an open dialog, full paths; none: as they are
    std::string wait_for_path = {};      // the path that the dialog must propose before it is noted
    std::function<void()> meanwhile = {}; // what happens while the dialog is open
    bool without_folder = false; // the dialog was given no folder; GTK 2 does not load any then
};

// Confirms an open dialog that was given no folder with that file, a full path.
Dialog_answer select_from_anywhere(const std::string& file);

// What the user saw when the dialog had appeared, as bytes.
struct Shown_dialog {
    bool is_file_dialog = false;
    std::string caption;
    std::string parent_title; // of the window that the dialog is on top of

    // Message boxes.
    std::string text;
    int icon = 0; // a Message_icon
    std::vector<Reply> buttons;
    std::vector<Reply> default_buttons; // none or one

    // File dialogs.
    bool saves = false;
    bool selects_many = false;
    bool asks_before_overwriting = false;
    std::string folder;
    std::string path;                     // the proposed file; empty when there is none
    std::vector<std::string> filters;     // their names
    std::vector<std::string> filter_fits; // which probe names each lets through, joined by spaces
    int filter = -1;                      // the chosen one
    std::optional<std::string> wildcard;  // as wx has it; 2.8 does not tell
    std::optional<long> style;            // as wx has it; 2.8 does not tell
};

// The toolkit's numbers for the icon of a message box.
enum Message_icon { ICON_INFO = 0, ICON_WARNING = 1, ICON_QUESTION = 2, ICON_ERROR = 3, ICON_NONE };

class Dialog_driver
{
public:
    Dialog_driver();
    ~Dialog_driver();
    Dialog_driver(const Dialog_driver&) = delete;
    Dialog_driver& operator=(const Dialog_driver&) = delete;

    // Answers are used in the order in which they are given.
    void answer_next(const Dialog_answer& answer);

    const std::vector<Shown_dialog>& shown() const { return m_shown; }
    const std::vector<std::string>& complaints() const { return m_complaints; }
    size_t unused_answers() const { return m_answers.size(); }

private:
    enum class Step { appearing, preparing, focusing, leaving };

    void advance();
    void look_for_dialog();
    void appear();
    void prepare();
    void focus();
    void leave();
    void enter(Step step);
    bool is_late() const;
    void complain(const std::string& what);

    bool is_settled() const;
    bool is_prepared() const;
    void apply_answer();
    void reply();
    Shown_dialog describe() const;

    unsigned int m_timer;
    void* m_dialog = nullptr; // becomes null by itself when the dialog is destroyed
    Step m_step = Step::appearing;
    std::chrono::steady_clock::time_point m_step_start;
    std::chrono::steady_clock::time_point m_last_attempt;
    Dialog_answer m_answer{Reply::cancel};
    std::deque<Dialog_answer> m_answers;
    std::vector<Shown_dialog> m_shown;
    std::vector<std::string> m_complaints;
};

} // namespace TEST
} // namespace QZ

#endif
