// What the window shows before a document is open: open, the recent documents, the samples.
#ifndef REFERENCE_HOST_WINDOW_WELCOME_VIEW_H
#define REFERENCE_HOST_WINDOW_WELCOME_VIEW_H

#include <functional>
#include <string>
#include <vector>

#include <wx/panel.h>

class wxListBox;

namespace reference_host
{

class Welcome_view : public wxPanel
{
public:
    // `choose_file` asks the user for a document, `open` opens one.
    Welcome_view(wxWindow* parent, std::function<void()> choose_file,
                 std::function<void(const std::string&)> open);

    void show_files(const std::vector<std::string>& recent,
                    const std::vector<std::string>& samples);

    wxListBox& recent() { return *m_recent; }
    wxListBox& samples() { return *m_samples; }

private:
    wxListBox* add_list(wxSizer* sizer, const wxString& label);
    void open_chosen(const wxListBox& list, const std::vector<std::string>& files) const;

    std::function<void(const std::string&)> m_open;
    wxListBox* m_recent;
    wxListBox* m_samples;
    std::vector<std::string> m_recent_files;
    std::vector<std::string> m_sample_files;
};

} // namespace reference_host

#endif
