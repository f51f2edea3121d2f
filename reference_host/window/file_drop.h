// Files that the user drops on the window.
#ifndef REFERENCE_HOST_WINDOW_FILE_DROP_H
#define REFERENCE_HOST_WINDOW_FILE_DROP_H

#include "reference_host/window/wx_text.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/dnd.h>

namespace reference_host
{

class File_drop : public wxFileDropTarget
{
public:
    using Open = std::function<void(const std::vector<std::string>&)>;
    explicit File_drop(Open open) : m_open(std::move(open)) {}

    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& names) override
    {
        std::vector<std::string> files;
        for (const wxString& name : names)
            files.push_back(to_bytes(name));
        m_open(files);
        return true;
    }

private:
    Open m_open;
};

} // namespace reference_host

#endif
