#include "reference_host/window/main_window.h"

#include "reference_host/window/code_view.h"
#include "reference_host/window/document_tree.h"
#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/file_drop.h"
#include "reference_host/window/graph_page.h"
#include "reference_host/window/message_list.h"
#include "reference_host/window/preview_page.h"
#include "reference_host/window/sample_files.h"
#include "reference_host/window/scene_view.h"
#include "reference_host/window/text_file.h"
#include "reference_host/window/welcome_view.h"
#include "reference_host/window/wx_text.h"

#include <filesystem>
#include <set>

#include <wx/config.h>
#include <wx/display.h>
#include <wx/filedlg.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/simplebook.h>
#include <wx/sizer.h>
#include <wx/splitter.h>

namespace reference_host
{
namespace
{

// Before code is made: none for what is chosen; for what is typed, shorter than a user notices and
// longer than between two keys.
constexpr int chosen_delay_ms = 1;
constexpr int typed_delay_ms = 80;
constexpr int watch_interval_ms = 500;

enum Book_page { welcome_page, work_page };

// Where the sashes are before anyone moves them, in pixels at scale 1; from the other side where
// negative.
constexpr int left_width = 210;
constexpr int right_width = -350;
constexpr int messages_height = -120;
const wxSize smallest_size(1024, 700); // of the screens that the window is made for
const wxSize usual_size(1280, 800);

struct Sash {
    const wxChar* key;
    int usual;
};
constexpr Sash rows_sash = {wxT("/window/rows"), messages_height};
constexpr Sash left_sash = {wxT("/window/left"), left_width};
constexpr Sash right_sash = {wxT("/window/right"), right_width};

wxSplitterWindow* make_splitter(wxWindow* parent, double gravity)
{
    auto* splitter =
        new wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE);
    splitter->SetSashGravity(gravity);
    splitter->SetMinimumPaneSize(parent->FromDIP(60));
    return splitter;
}

} // namespace

Main_window::Main_window(const Plugin_library& plugin, wxConfigBase& config,
                         const Scene_request& usual)
    : wxFrame(nullptr, wxID_ANY, wxT("Shader export"), wxDefaultPosition, smallest_size),
      m_config(config),
      m_memory(config),
      m_workspace(plugin, m_memory, usual)
{
    make_menu();
    CreateStatusBar();
    make_views(plugin);
    SetDropTarget(
        new File_drop([this](const std::vector<std::string>& files) { open_files(files); }));
    m_trial_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { m_workspace.run_trial(); });
    m_watch_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { reload_changed(); });
    m_watch_timer.Start(watch_interval_ms);
    m_workspace.listen([this](Change change) { on_change(change); });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        store_layout();
        event.Skip();
    });
    m_config.SetPath(wxT("/recent"));
    m_recent.Load(m_config);
    m_config.SetPath(wxT("/"));
    show_recent();
    restore_layout();
}

Main_window::~Main_window()
{
    m_trial_timer.Stop();
    m_watch_timer.Stop();
    DestroyChildren(); // they look at the workspace until they end
}

void Main_window::make_menu()
{
    struct Entry {
        const char* label;
        std::function<void()> action;
    };
    struct Menu {
        const char* title;
        std::vector<Entry> entries;
    };
    const auto page = [this](size_t index) {
        return [this, index] { m_pages->SetSelection(index); };
    };
    const std::vector<Menu> menus = {
        {"&File",
         {{"&Open...\tCtrl+O", [this] { choose_files(); }},
          {"&Reload\tCtrl+R",
           [this] {
               if (m_workspace.current())
                   m_workspace.reload(*m_workspace.current());
           }},
          {"&Close document\tCtrl+W", [this] { m_workspace.close_current(); }},
          {"&Quit\tCtrl+Q", [this] { Close(); }}}},
        {"&Export",
         {{"&Export\tCtrl+E", [this] { m_export_bar->export_current(); }},
          {"Export to &all...\tCtrl+Shift+E", [this] { m_export_bar->export_to_all(); }}}},
        {"&View",
         {{"&Find\tCtrl+F", [this] { search_page(); }},
          {"&Make the code again\tF5", [this] { m_workspace.run_trial(); }},
          {"&Graph\tCtrl+1", page(0)},
          {"&Preview\tCtrl+2", page(1)},
          {"&Code\tCtrl+3", page(2)},
          {"&Document\tCtrl+4", page(3)}}},
    };
    wxMenuBar* bar = new wxMenuBar;
    for (const Menu& menu : menus) {
        wxMenu* items = new wxMenu;
        for (const Entry& entry : menu.entries) {
            const int id = items->Append(wxID_ANY, wxString(entry.label, wxConvUTF8))->GetId();
            Bind(
                wxEVT_MENU, [action = entry.action](wxCommandEvent&) { action(); }, id);
        }
        bar->Append(items, wxString(menu.title, wxConvUTF8));
    }
    wxMenu* recent = new wxMenu;
    m_recent.UseMenu(recent);
    bar->GetMenu(0)->Insert(1, wxID_ANY, wxT("Open &recent"), recent);
    Bind(
        wxEVT_MENU,
        [this](wxCommandEvent& event) {
            const size_t index = static_cast<size_t>(event.GetId() - m_recent.GetBaseId());
            open_files({to_bytes(m_recent.GetHistoryFile(index))});
        },
        m_recent.GetBaseId(), m_recent.GetBaseId() + m_recent.GetMaxFiles() - 1);
    SetMenuBar(bar);
}

void Main_window::make_views(const Plugin_library& plugin)
{
    m_book = new wxSimplebook(this);
    m_welcome = new Welcome_view(
        m_book, [this] { choose_files(); },
        [this](const std::string& file) { open_files({file}); });
    m_rows = make_splitter(m_book, 1.0);
    m_left = make_splitter(m_rows, 0.0);
    m_documents = new Document_tree(m_left, m_workspace);
    m_right = make_splitter(m_left, 1.0);
    wxWindow* pages = make_pages(m_right);
    m_right->SplitVertically(pages, make_right_side(m_right, plugin));
    m_left->SplitVertically(m_documents, m_right);
    m_messages =
        new Message_list(m_rows, m_workspace, [this](const Place& place) { go_to(place); });
    m_rows->SplitHorizontally(m_left, m_messages);
    m_book->AddPage(m_welcome, wxString());
    m_book->AddPage(m_rows, wxString());
}

wxWindow* Main_window::make_pages(wxWindow* parent)
{
    m_pages = new wxNotebook(parent, wxID_ANY);
    m_graph = new Graph_page(m_pages, m_workspace);
    m_preview = new Preview_page(m_pages, m_workspace);
    m_code = new Code_view(m_pages, m_workspace);
    m_source = new Text_view(m_pages, Text_kind::document);
    m_pages->AddPage(m_graph, wxT("Graph"));
    m_pages->AddPage(m_preview, wxT("Preview"));
    m_pages->AddPage(m_code, wxT("Code"), true);
    m_pages->AddPage(m_source, wxT("Document"));
    return m_pages;
}

wxWindow* Main_window::make_right_side(wxWindow* parent, const Plugin_library& plugin)
{
    wxPanel* side = new wxPanel(parent);
    wxNotebook* book = new wxNotebook(side, wxID_ANY);
    m_exporter = new Exporter_view(book, m_workspace, plugin);
    m_scene = new Scene_view(book, m_workspace);
    book->AddPage(m_exporter, wxT("Exporter"));
    book->AddPage(m_scene, wxT("Scene"));
    m_export_bar = new Export_bar(side, m_workspace);
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(book, 1, wxEXPAND);
    sizer->Add(m_export_bar, 0, wxEXPAND | wxTOP, FromDIP(4));
    side->SetSizer(sizer);
    return side;
}

// ---- what lasts from one run to the next

void Main_window::restore_layout()
{
    const wxRect screen = wxDisplay(static_cast<unsigned>(0)).GetClientArea();
    wxSize size(static_cast<int>(m_config.ReadLong(wxT("/window/width"), 0)),
                static_cast<int>(m_config.ReadLong(wxT("/window/height"), 0)));
    if (size.x <= 0 || size.y <= 0)
        size = FromDIP(usual_size);
    size.DecTo(screen.GetSize());
    SetSize(wxRect(screen.GetTopLeft(), size));
    Layout();
    const auto restore = [this](wxSplitterWindow* splitter, const Sash& sash) {
        splitter->SetSashPosition(
            static_cast<int>(m_config.ReadLong(sash.key, FromDIP(sash.usual))));
    };
    restore(m_rows, rows_sash);
    restore(m_left, left_sash);
    restore(m_right, right_sash);
}

// The sashes on the right and below are kept from that side: they stay there in a larger window.
void Main_window::store_layout()
{
    m_config.Write(wxT("/window/width"), static_cast<long>(GetSize().x));
    m_config.Write(wxT("/window/height"), static_cast<long>(GetSize().y));
    m_config.Write(rows_sash.key,
                   static_cast<long>(m_rows->GetSashPosition() - m_rows->GetSize().y));
    m_config.Write(left_sash.key, static_cast<long>(m_left->GetSashPosition()));
    m_config.Write(right_sash.key,
                   static_cast<long>(m_right->GetSashPosition() - m_right->GetSize().x));
    m_config.SetPath(wxT("/recent"));
    m_recent.Save(m_config);
    m_config.SetPath(wxT("/"));
    m_config.Flush();
}

// ---- what happens

void Main_window::on_change(Change change)
{
    if (change == Change::documents || change == Change::current)
        show_current();
    if (change == Change::documents)
        show_source();
    if (change == Change::pointed)
        show_node();
    const bool is_outcome =
        change == Change::trial || change == Change::messages || change == Change::pointed;
    if (is_outcome)
        return;
    const bool is_typed = change == Change::options || change == Change::scene;
    const int delay = is_typed ? typed_delay_ms : chosen_delay_ms;
    const bool is_soon = m_trial_timer.IsRunning() && m_trial_timer.GetInterval() < delay;
    if (!is_soon)
        m_trial_timer.StartOnce(delay);
}

void Main_window::show_current()
{
    const Work_document* current = m_workspace.current();
    m_book->ChangeSelection(current ? work_page : welcome_page);
    wxString title = wxT("Shader export");
    if (current)
        title = to_text(std::filesystem::path(current->scene.document).filename().string()) +
                wxT(" - ") + title;
    SetTitle(title);
    show_node();
    show_source();
}

// Which node is exported, and which one is pointed out.
void Main_window::show_node()
{
    const Work_document* current = m_workspace.current();
    const Node* node = current ? current->node() : nullptr;
    const std::string& pointed = m_workspace.pointed_out();
    std::string text = node ? full_name(*node) + " (" + node->category + ")" : "";
    if (!pointed.empty())
        text += (text.empty() ? "" : "; shown: ") + pointed +
                " (Return in the list or a click in the graph selects it, Escape goes back)";
    SetStatusText(to_text(text));
}

void Main_window::show_source()
{
    const Work_document* current = m_workspace.current();
    m_source->show(current ? read_text(current->scene.document) : "");
}

void Main_window::show_recent()
{
    std::vector<std::string> recent;
    for (size_t i = 0; i < m_recent.GetCount(); ++i)
        recent.push_back(to_bytes(m_recent.GetHistoryFile(i)));
    m_welcome->show_files(recent, sample_files());
}

void Main_window::go_to(const Place& place)
{
    m_source->show(read_text(place.file));
    m_pages->SetSelection(m_pages->FindPage(m_source));
    if (place.line > 0)
        m_source->go_to_line(place.line);
}

void Main_window::open_files(const std::vector<std::string>& files)
{
    for (const std::string& file : files) {
        m_watch.has_changed(std::filesystem::absolute(file).lexically_normal().string());
        m_workspace.open(file);
        m_recent.AddFileToHistory(to_text(m_workspace.current()->scene.document));
    }
    show_recent();
}

void Main_window::choose_files()
{
    wxFileDialog dialog(this, wxT("Open documents"), wxString(), wxString(),
                        wxT("MaterialX documents (*.mtlx)|*.mtlx|All files|*"),
                        wxFD_OPEN | wxFD_MULTIPLE | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() != wxID_OK)
        return;
    wxArrayString paths;
    dialog.GetPaths(paths);
    std::vector<std::string> files;
    for (const wxString& path : paths)
        files.push_back(to_bytes(path));
    open_files(files);
}

void Main_window::search_page()
{
    if (m_pages->GetCurrentPage() == m_source)
        m_source->start_search();
    else {
        m_pages->SetSelection(m_pages->FindPage(m_code));
        m_code->text().start_search();
    }
}

// A document is read again when it, or a file that it includes, has changed.
void Main_window::reload_changed()
{
    std::vector<const Work_document*> changed;
    for (const auto& document : m_workspace.documents()) {
        std::set<std::string> files = {document->scene.document};
        if (document->content.graph) {
            for (const auto& node : document->content.graph->nodes)
                files.insert(node->place.file);
        }
        bool has_changed = false;
        for (const std::string& file : files)
            has_changed = m_watch.has_changed(file) || has_changed;
        if (has_changed)
            changed.push_back(document.get());
    }
    for (const Work_document* document : changed)
        m_workspace.reload(*document);
}

} // namespace reference_host
