#include "reference_host/window/message_list.h"

#include "reference_host/window/wx_text.h"

#include <filesystem>

#include <wx/settings.h>

namespace reference_host
{
namespace
{

enum Column { kind_column, text_column, node_column, place_column };

constexpr const char* kind_words[] = {"Error", "Warning", "Note"}; // by Message_kind
constexpr int narrow = 80;                                         // pixels at scale 1
constexpr int wide = 150;

wxString place_text(const Place& place)
{
    if (place.file.empty())
        return wxString();
    const std::string file = std::filesystem::path(place.file).filename().string();
    return to_text(place.line > 0 ? file + ":" + std::to_string(place.line) : file);
}

// Lines of a message box as one line of the list.
wxString on_one_line(const std::string& text)
{
    wxString line = to_text(text);
    line.Replace(wxT("\n"), wxT(" "));
    return line.Trim();
}

} // namespace

Message_list::Message_list(wxWindow* parent, Workspace& workspace,
                           std::function<void(const Place&)> go_to)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT | wxLC_SINGLE_SEL),
      m_workspace(workspace),
      m_go_to(std::move(go_to))
{
    InsertColumn(kind_column, wxT("Kind"));
    InsertColumn(text_column, wxT("Message"));
    InsertColumn(node_column, wxT("Node"));
    InsertColumn(place_column, wxT("Place"));
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        fit_columns();
    });
    Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent& event) { open(event.GetIndex()); });
    m_workspace.listen([this](Change change) {
        if (change == Change::messages)
            fill();
    });
    fit_columns();
}

// The message gets the width that the others leave.
void Message_list::fit_columns()
{
    SetColumnWidth(kind_column, FromDIP(narrow));
    SetColumnWidth(node_column, FromDIP(wide));
    SetColumnWidth(place_column, FromDIP(wide));
    const int scroll_bar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    const int rest = GetClientSize().GetWidth() - FromDIP(narrow + 2 * wide) - scroll_bar;
    SetColumnWidth(text_column, std::max(rest, FromDIP(wide)));
}

void Message_list::fill()
{
    Freeze();
    DeleteAllItems();
    for (const Listed_message& message : m_workspace.messages()) {
        const long row = InsertItem(
            GetItemCount(), wxString(kind_words[static_cast<int>(message.kind)], wxConvUTF8));
        SetItem(row, text_column, on_one_line(message.text));
        SetItem(row, node_column, to_text(message.node));
        SetItem(row, place_column, place_text(message.place));
    }
    Thaw();
}

void Message_list::open(long row)
{
    const auto& messages = m_workspace.messages();
    if (row < 0 || row >= static_cast<long>(messages.size()))
        return;
    const Listed_message message = messages[static_cast<size_t>(row)];
    if (!message.node.empty())
        m_workspace.point_out(message.node);
    if (!message.place.file.empty())
        m_go_to(message.place);
}

} // namespace reference_host
