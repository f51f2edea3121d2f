// What there is to say about the documents and exports, each line with its node and place.
#ifndef REFERENCE_HOST_WINDOW_MESSAGE_LIST_H
#define REFERENCE_HOST_WINDOW_MESSAGE_LIST_H

#include "reference_host/window/workspace.h"

#include <functional>

#include <wx/listctrl.h>

namespace reference_host
{

class Message_list : public wxListCtrl
{
public:
    // The workspace must outlive the list. A message that the user opens (Return, double click)
    // points out its node; one with a place is also handed to `go_to`.
    Message_list(wxWindow* parent, Workspace& workspace, std::function<void(const Place&)> go_to);

private:
    void fill();
    void fit_columns();
    void open(long row);

    Workspace& m_workspace;
    std::function<void(const Place&)> m_go_to;
};

} // namespace reference_host

#endif
