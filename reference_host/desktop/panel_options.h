// Sets the options on an exporter's panel by their names, as a user would by hand.
//
// An option is a check box, combo box or text field. Its names are the control's window name, its
// label, and the label of the text before it; upper and lower case do not matter, spaces and
// underscores are one, and a colon at the end is left out.
#ifndef REFERENCE_HOST_DESKTOP_PANEL_OPTIONS_H
#define REFERENCE_HOST_DESKTOP_PANEL_OPTIONS_H

#include <string>
#include <vector>

class wxWindow;

namespace reference_host
{

struct Option_setting {
    std::string exporter; // the only one that it is meant for; "*": all that have it; empty: all
    std::string name;
    std::string value; // on, off, true, false; the entry of a combo box; a text
};

// Sets the options in their order; one meant for all that have it is skipped where it does not
// exist. Throws std::invalid_argument with a message when the panel has no such option, or several,
// or the option does not take the value; those before it are set then.
void set_panel_options(wxWindow& panel, const std::vector<Option_setting>& settings);

struct Panel_option {
    std::string name;                 // by which it is best called
    std::string type;                 // "flag", "choice" or "text"
    std::string value;                // as set: "on" or "off", an entry, a text
    std::vector<std::string> choices; // none: any text
};

// The options in the order of the panel. The export-file field is not one: hosts fill it.
std::vector<Panel_option> panel_options(wxWindow& panel);

} // namespace reference_host

#endif
