#include "export_common/code_output.h"

#include "export_common/output_names.h"
#include "exporter_base/bytes.h"
#include "exporter_base/decimal.h"
#include "exporter_base/files.h"

#include <new>

namespace QZ
{
namespace TOVIRAEXPORT
{

Code_text::Code_text(TSDK::IGenerated_shader* shader, int code_index)
{
    const unsigned int length = shader->get_code_size(code_index);
    m_buffer.reset(new (std::nothrow) char[size_t{length} + 1]);
    if (!m_buffer)
        return;
    m_buffer[0] = '\0';
    shader->get_code(code_index, m_buffer.get(), length);
    m_buffer[length] = '\0';
}

bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, Code_text& code,
                            wxString& error)
{
    const wxString prefix = wxT("Error! Exporter_base::get_shader_source_code: ");
    code = Code_text();
    if (!shader) {
        error = prefix + wxT("no shader.");
        return false;
    }
    const int count = shader->get_num_codes();
    if (count <= code_index) {
        error = prefix + wxT("illegal code_index (") + decimal(code_index) +
                wxT("), it should be less than ") + decimal(count) + wxT(".");
        return false;
    }
    code = Code_text(shader, code_index);
    return true;
}

bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, wxString& code,
                            wxString& error)
{
    Code_text text;
    const bool copied = get_shader_source_code(shader, code_index, text, error);
    code = from_bytes(text.c_str());
    return copied;
}

bool write_code(const wxString& filename, TSDK::IGenerated_shader* shader)
{
    if (!shader)
        return false;
    shader->get_num_codes(); // the count is ignored on purpose: code 0 is trusted to be there
    wxString discarded_error;
    return save_bytes_to_file(filename, {Code_text(shader, 0).c_str()}, discarded_error);
}

bool save_bytes_to_file(const wxString& filename, std::initializer_list<std::string_view> pieces,
                        wxString& error)
{
    switch (write_file(to_bytes(filename), pieces)) {
    case WRITE_DONE:
        return true;
    case WRITE_OPEN_FAILED:
        error = wxT("write open failed [") + filename + wxT("]");
        return false;
    case WRITE_FAILED:
        break;
    }
    error = wxT("write failed [") + filename + wxT("]");
    return false;
}

bool save_buffer_to_file(const wxString& filename, const wxString& buffer, wxString& error)
{
    return save_bytes_to_file(filename, {to_bytes(buffer).c_str()}, error);
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
