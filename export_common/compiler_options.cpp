#include "export_common/compiler_options.h"

#include "exporter_base/bytes.h"
#include "exporter_base/decimal.h"
#include "exporter_base/files.h"

#include <wx/filename.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

char path_separator()
{
    return static_cast<char>(wxFileName::GetPathSeparators()[0]);
}

std::string copyright_path(const char* directory)
{
    std::string path = directory;
    if (!path.empty() && path.back() != '/' && path.back() != '\\')
        path += path_separator();
    return path + "user_copyright.txt";
}

} // namespace

void set_option(TSDK::ICompiler_options* options, const char* name, const char* value)
{
    if (options)
        options->set_option(name, text_or_empty(value));
}

void set_option(TSDK::ICompiler_options* options, const char* name, const std::string& value)
{
    set_option(options, name, value.c_str());
}

void set_option(TSDK::ICompiler_options* options, const char* name, const wxString& value)
{
    set_option(options, name, to_bytes(value));
}

void set_options(TSDK::ICompiler_options* options, const Option_table& table)
{
    for (size_t i = 0; i < table.count; ++i)
        set_option(options, table.rows[i].name, table.rows[i].value);
}

const char* switch_text(bool on)
{
    return on ? "true" : "false";
}

void set_scene_ambient_option(TSDK::ICompiler_options* options, TSDK::IGraph_view* view)
{
    float rgba[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    view->get_scene_ambient(rgba);
    std::string text = "float4(";
    for (int i = 0; i < 4; ++i)
        text += fixed(rgba[i], 2) + (i < 3 ? "," : ")");
    set_option(options, "scene_ambient", text);
}

void set_user_copyright_option(TSDK::ITovira* app, TSDK::ICompiler_options* options)
{
    int count = 0;
    const char** paths = app->get_search_paths(count);
    std::string text;
    for (int i = 0; paths && i < count; ++i) {
        if (paths[i] && read_text_file(copyright_path(paths[i]), text)) {
            set_option(options, "user_copyright", text);
            return;
        }
    }
}

namespace DETAIL
{

void substitute(wxString& text, const wxString& pattern, const wxString& replacement)
{
    constexpr int round_limit = 20; // a replacement may hold the pattern again
    constexpr size_t placeholder_length = 2;
    for (int round = 0; round < round_limit; ++round) {
        const size_t found = text.find(pattern);
        if (found == wxString::npos)
            return;
        text.replace(found, placeholder_length, replacement);
    }
}

void set_compile_flags(wxString&) {}

} // namespace DETAIL

} // namespace TOVIRAEXPORT
} // namespace QZ
