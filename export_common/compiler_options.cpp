#include "export_common/compiler_options.h"

#include "export_common/number_text.h"
#include "exporter_base/bytes.h"

#include <cstdio>
#include <memory>

#include <sys/stat.h>

#include <wx/filename.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

struct Close_file {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close_file>;

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

// The first copyright file that exists and opens, and its length in bytes; an empty file when there
// is none.
File open_copyright(const char** paths, int count, size_t& length)
{
    for (int i = 0; i < count; ++i) {
        if (!paths[i])
            continue;
        File file{std::fopen(copyright_path(paths[i]).c_str(), "rb")};
        struct stat status;
        if (file && ::fstat(::fileno(file.get()), &status) == 0 && S_ISREG(status.st_mode)) {
            length = static_cast<size_t>(status.st_size);
            return file;
        }
    }
    return nullptr;
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
    size_t length = 0;
    const File file = paths ? open_copyright(paths, count, length) : nullptr;
    if (!file)
        return;
    std::string text(length, '\0');
    text.resize(std::fread(&text[0], 1, length, file.get()));
    set_option(options, "user_copyright", text);
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
