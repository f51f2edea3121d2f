#include "export_common/code_output.h"

#include "export_common/output_names.h"
#include "exporter_base/bytes.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// Writes a text's bytes up to the first NUL. Unbuffered, so that the count of bytes written is what
// reached the file: a full disk shows even for a short text.
bool write_bytes(const wxString& filename, const char* bytes, wxString& error)
{
    std::FILE* file = std::fopen(to_bytes(filename).c_str(), "wt");
    if (!file) {
        error = wxT("write open failed [") + filename + wxT("]");
        return false;
    }
    std::setvbuf(file, nullptr, _IONBF, 0);
    const size_t length = std::strlen(bytes);
    const size_t written = std::fwrite(bytes, 1, length, file);
    std::fclose(file);
    if (written == length)
        return true;
    error = wxT("write failed [") + filename + wxT("]");
    return false;
}

} // namespace

std::string get_code_bytes(TSDK::IGenerated_shader* shader, int code_index)
{
    const unsigned int length = shader->get_code_size(code_index);
    const std::unique_ptr<char[]> buffer(new (std::nothrow) char[size_t{length} + 1]);
    if (!buffer)
        return std::string();
    buffer[0] = '\0';
    shader->get_code(code_index, buffer.get(), length);
    buffer[length] = '\0';
    return std::string(buffer.get());
}

bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, wxString& code,
                            wxString& error)
{
    const wxString prefix = wxT("Error! Exporter_base::get_shader_source_code: ");
    code = wxEmptyString;
    if (!shader) {
        error = prefix + wxT("no shader.");
        return false;
    }
    const int count = shader->get_num_codes();
    if (count <= code_index) {
        error =
            prefix + wxString::Format(wxT("illegal code_index (%d), it should be less than %d."),
                                      code_index, count);
        return false;
    }
    code = from_bytes(get_code_bytes(shader, code_index).c_str());
    return true;
}

bool write_code(const wxString& filename, TSDK::IGenerated_shader* shader)
{
    if (!shader)
        return false;
    shader->get_num_codes(); // asked in vain on purpose: code 0 is taken on trust
    wxString discarded_error;
    return write_bytes(filename, get_code_bytes(shader, 0).c_str(), discarded_error);
}

bool save_buffer_to_file(const wxString& filename, const wxString& buffer, wxString& error)
{
    return write_bytes(filename, to_bytes(buffer).c_str(), error);
}

wxString add_extension(const wxString& filename, const wxString& extension)
{
    return split_output_name(filename, {extension}).with(wxT(".") + extension);
}

TSDK::IGenerated_shader* generate_code(TSDK::ICompilation_unit* unit, const char* target,
                                       TSDK::ICompiler_options* options)
{
    return unit && options ? unit->generate_shader(target, options) : nullptr;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
