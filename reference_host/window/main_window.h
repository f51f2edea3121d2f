// The program's window: the views around one workspace, the menu and its keys.
//
//   welcome, as long as no document is open, else
//   +-----------+------------------+-------------+
//   | documents | graph, preview,  | exporter,   |
//   |           | code, document   | scene       |
//   |           |                  | export      |
//   +-----------+------------------+-------------+
//   | messages                                   |
//   +--------------------------------------------+
#ifndef REFERENCE_HOST_WINDOW_MAIN_WINDOW_H
#define REFERENCE_HOST_WINDOW_MAIN_WINDOW_H

#include "reference_host/window/document_memory.h"
#include "reference_host/window/file_watch.h"
#include "reference_host/window/workspace.h"

#include <string>
#include <vector>

#include <wx/filehistory.h>
#include <wx/frame.h>
#include <wx/timer.h>

class wxConfigBase;
class wxNotebook;
class wxSimplebook;
class wxSplitterWindow;

namespace reference_host
{

class Code_view;
class Document_tree;
class Export_bar;
class Exporter_view;
class Graph_page;
class Message_list;
class Preview_page;
class Scene_view;
class Text_view;
class Welcome_view;

class Main_window : public wxFrame
{
public:
    // Both must outlive the window. `usual` is the scene that documents start with.
    Main_window(const Plugin_library& plugin, wxConfigBase& config, const Scene_request& usual);
    ~Main_window() override;

    // Opens documents; the last one becomes the current one.
    void open_files(const std::vector<std::string>& files);

    Workspace& workspace() { return m_workspace; }
    wxNotebook& pages() { return *m_pages; }
    wxSimplebook& book() { return *m_book; }
    Welcome_view& welcome() { return *m_welcome; }
    Document_tree& documents() { return *m_documents; }
    Graph_page& graph() { return *m_graph; }
    Preview_page& preview() { return *m_preview; }
    Code_view& code() { return *m_code; }
    Text_view& source() { return *m_source; }
    Exporter_view& exporter() { return *m_exporter; }
    Scene_view& scene() { return *m_scene; }
    Export_bar& export_bar() { return *m_export_bar; }
    Message_list& messages() { return *m_messages; }

private:
    void make_menu();
    void make_views(const Plugin_library& plugin);
    wxWindow* make_pages(wxWindow* parent);
    wxWindow* make_right_side(wxWindow* parent, const Plugin_library& plugin);
    void restore_layout();
    void store_layout();

    void on_change(Change change);
    void show_current();
    void show_node();
    void show_source();
    void show_recent();
    void go_to(const Place& place);
    void choose_files();
    void search_page();
    void reload_changed();

    wxConfigBase& m_config;
    Document_memory m_memory;
    Workspace m_workspace;
    File_watch m_watch;
    wxFileHistory m_recent;
    wxTimer m_trial_timer; // runs out when the user pauses
    wxTimer m_watch_timer;
    wxSimplebook* m_book = nullptr;
    wxSplitterWindow* m_rows = nullptr;
    wxSplitterWindow* m_left = nullptr;
    wxSplitterWindow* m_right = nullptr;
    wxNotebook* m_pages = nullptr;
    Welcome_view* m_welcome = nullptr;
    Document_tree* m_documents = nullptr;
    Graph_page* m_graph = nullptr;
    Preview_page* m_preview = nullptr;
    Code_view* m_code = nullptr;
    Text_view* m_source = nullptr;
    Exporter_view* m_exporter = nullptr;
    Scene_view* m_scene = nullptr;
    Export_bar* m_export_bar = nullptr;
    Message_list* m_messages = nullptr;
};

} // namespace reference_host

#endif
