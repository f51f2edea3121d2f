// Text to read: highlighted, with line numbers and a field that searches it.
#ifndef REFERENCE_HOST_WINDOW_TEXT_VIEW_H
#define REFERENCE_HOST_WINDOW_TEXT_VIEW_H

#include <functional>
#include <string>
#include <vector>

#include <wx/panel.h>

class wxSearchCtrl;
class wxStyledTextCtrl;

namespace reference_host
{

enum class Text_kind { shader, document };

// What became of a line from one text to another.
enum class Line_state { same, added, removed };

class Text_view : public wxPanel
{
public:
    Text_view(wxWindow* parent, Text_kind kind);

    // Shows another text; where it is the same, nothing moves.
    void show(const std::string& bytes);

    // Shows a text whose lines are marked.
    struct Line {
        std::string text;
        Line_state state = Line_state::same;
    };
    void show_lines(const std::vector<Line>& lines);

    // Selects a line, the first being 1, and brings it into sight.
    void go_to_line(int line);

    // Puts the keys into the search field.
    void start_search();

    void copy_all() const;

    // Calls back with the number of a line that the user clicks, the first being 1.
    void on_line_click(std::function<void(int)> callback);

    // Calls back when the user presses Escape in the text.
    void on_escape(std::function<void()> callback);

    // What stands there, what of it is selected, and the line of the caret, the first being 1.
    std::string content() const;
    std::string selection() const;
    int line() const;

    // How many lines are marked as added or removed.
    int marked_lines() const;

    wxWindow& text() { return *m_text_window; }
    wxSearchCtrl& search() { return *m_search; }

private:
    void set_up_text();
    void find(bool forward);
    void set_text(const wxString& text);

    Text_kind m_kind;
    wxSearchCtrl* m_search;
    wxStyledTextCtrl* m_text;
    wxWindow* m_text_window; // the same
};

} // namespace reference_host

#endif
