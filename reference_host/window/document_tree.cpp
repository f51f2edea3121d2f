#include "reference_host/window/document_tree.h"

#include "reference_host/window/search_end.h"
#include "reference_host/window/wx_text.h"

#include <filesystem>

#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

namespace reference_host
{
namespace
{

struct Node_group {
    const char* label;
    bool (*holds)(const Node& node);
};

// Every node is in the first group that holds it.
constexpr Node_group groups[] = {
    {"Materials", [](const Node& node) { return node.type == Value_type::material; }},
    {"Shaders",
     [](const Node& node) {
         return node.type == Value_type::surfaceshader || node.type == Value_type::volumeshader ||
                node.type == Value_type::displacementshader;
     }},
    {"Lights", [](const Node& node) { return node.type == Value_type::lightshader; }},
    {"Other nodes", [](const Node&) { return true; }},
};

const Node_group& group_of(const Node& node)
{
    const Node_group* group = groups;
    while (!group->holds(node))
        ++group;
    return *group;
}

// What an item of the tree stands for: a node, or the document itself where the name is empty.
class Item : public wxTreeItemData
{
public:
    Item(const Work_document& item_document, const std::string& item_node)
        : document(item_document), node(item_node)
    {
    }

    const Work_document& document;
    const std::string node;
};

bool fits(const Node& node, const wxString& wanted)
{
    return wanted.empty() ||
           to_text(full_name(node) + " " + node.category).Lower().Contains(wanted);
}

} // namespace

Document_tree::Document_tree(wxWindow* parent, Workspace& workspace)
    : wxPanel(parent),
      m_workspace(workspace),
      m_search(new wxSearchCtrl(this, wxID_ANY)),
      m_tree(new wxTreeCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                            wxTR_DEFAULT_STYLE | wxTR_HIDE_ROOT | wxTR_LINES_AT_ROOT))
{
    m_search->SetDescriptiveText(wxT("Search nodes"));
    m_search->ShowCancelButton(true);
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_search, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(m_tree, 1, wxEXPAND);
    SetSizer(sizer);
    m_search->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { fill(); });
    m_search->Bind(wxEVT_SEARCHCTRL_CANCEL_BTN, [this](wxCommandEvent&) { m_search->Clear(); });
    end_with_escape(*m_search, *m_tree);
    m_tree->Bind(wxEVT_TREE_SEL_CHANGED, [this](wxTreeEvent& event) { select(event.GetItem()); });
    m_tree->Bind(wxEVT_TREE_ITEM_ACTIVATED,
                 [this](wxTreeEvent& event) { select(event.GetItem()); });
    m_workspace.listen([this](Change change) { on_change(change); });
    fill();
}

void Document_tree::on_change(Change change)
{
    if (change == Change::documents)
        fill();
    if (change == Change::current || change == Change::pointed)
        mark_current();
}

void Document_tree::fill()
{
    m_is_filling = true;
    m_tree->Freeze();
    m_tree->DeleteAllItems();
    m_tree->AddRoot(wxString());
    for (const auto& document : m_workspace.documents())
        fill_document(*document, m_search->GetValue().Lower());
    m_tree->Thaw();
    m_is_filling = false;
    mark_current();
}

void Document_tree::fill_document(const Work_document& document, const wxString& wanted)
{
    const std::string name = std::filesystem::path(document.scene.document).filename().string();
    const wxTreeItemId top =
        m_tree->AppendItem(m_tree->GetRootItem(), to_text(name), -1, -1, new Item(document, ""));
    m_tree->SetItemBold(top);
    if (!document.content.graph) {
        m_tree->AppendItem(top, wxT("cannot be read"), -1, -1, new Item(document, ""));
        return m_tree->Expand(top);
    }
    for (const Node_group& group : groups) {
        wxTreeItemId branch;
        for (const auto& node : document.content.graph->nodes) {
            if (&group_of(*node) != &group || !fits(*node, wanted))
                continue;
            if (!branch.IsOk())
                branch = m_tree->AppendItem(top, wxString(group.label, wxConvUTF8));
            m_tree->AppendItem(branch, to_text(full_name(*node) + "  (" + node->category + ")"), -1,
                               -1, new Item(document, full_name(*node)));
        }
    }
    m_tree->ExpandAllChildren(top);
}

// Selects the item of what is pointed out, else of what is current, where the search shows it.
void Document_tree::mark_current()
{
    const Work_document* current = m_workspace.current();
    if (!current)
        return;
    const Node* node = current->node();
    const std::string& pointed = m_workspace.pointed_out();
    const std::string name = !pointed.empty() ? pointed : node ? full_name(*node) : std::string();
    m_is_filling = true;
    wxTreeItemIdValue cookie;
    const wxTreeItemId root = m_tree->GetRootItem();
    for (wxTreeItemId item = m_tree->GetFirstChild(root, cookie); item.IsOk();
         item = m_tree->GetNext(item)) {
        const auto* data = dynamic_cast<const Item*>(m_tree->GetItemData(item));
        if (data && &data->document == current && data->node == name) {
            m_tree->SelectItem(item);
            m_tree->EnsureVisible(item);
            break;
        }
    }
    m_is_filling = false;
}

void Document_tree::select(const wxTreeItemId& chosen)
{
    if (m_is_filling || !chosen.IsOk())
        return;
    const auto* item = dynamic_cast<const Item*>(m_tree->GetItemData(chosen));
    if (!item)
        return;
    m_workspace.select(item->document,
                       item->node.empty() ? item->document.scene.node : std::string(item->node));
}

} // namespace reference_host
