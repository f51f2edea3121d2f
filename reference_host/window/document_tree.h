// The open documents with their nodes, and a field that searches them. A click selects the node
// that is exported; so does Return for one that was only pointed out.
#ifndef REFERENCE_HOST_WINDOW_DOCUMENT_TREE_H
#define REFERENCE_HOST_WINDOW_DOCUMENT_TREE_H

#include "reference_host/window/workspace.h"

#include <wx/panel.h>
#include <wx/treectrl.h>

class wxSearchCtrl;

namespace reference_host
{

class Document_tree : public wxPanel
{
public:
    // The workspace must outlive the tree.
    Document_tree(wxWindow* parent, Workspace& workspace);

    wxTreeCtrl& tree() { return *m_tree; }
    wxSearchCtrl& search() { return *m_search; }

private:
    void on_change(Change change);
    void fill();
    void fill_document(const Work_document& document, const wxString& wanted);
    void mark_current();
    void select(const wxTreeItemId& item);

    Workspace& m_workspace;
    wxSearchCtrl* m_search;
    wxTreeCtrl* m_tree;
    bool m_is_filling = false; // selections are ours then, not the user's
};

} // namespace reference_host

#endif
