#include "exporters/exporter_swrc.h"

#include "export_common/code_output.h"
#include "export_common/compiler_options.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "export_common/output_names.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_table.h"
#include "exporters/file_check_boxes.h"

#include <cstdio>
#include <string>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr int cpp_code_index = 0;
constexpr int qz_code_index = 1;

} // namespace

BEGIN_EVENT_TABLE(Exporter_swrc_eventhandler, wxEvtHandler)
END_EVENT_TABLE()

Exporter_swrc_eventhandler::Exporter_swrc_eventhandler(Exporter_swrc* exporter)
    : m_exporter(exporter)
{
}

Exporter_swrc::Exporter_swrc() : Exporter_base(facts_of<Exporter_swrc>().name), m_eventhandler(this)
{
}

Exporter_swrc::~Exporter_swrc()
{
    detach_from_panel();
}

const char* Exporter_swrc::get_language() const
{
    return facts_of<Exporter_swrc>().language;
}

void Exporter_swrc::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), {get_exportfile_wildcard_all(),
                                                    {wxT("*")},
                                                    wxT("Choose a Corvane export file"),
                                                    wxT("Save a Corvane export file"),
                                                    false});
}

int Exporter_swrc::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    create_common_ui(sizer);
    parent->PushEventHandler(&m_eventhandler);
    const File_check_box_pair boxes = add_file_check_boxes(
        parent, sizer, get_os_specific_font(1, 90), {ID_SWRC_QZ, wxT("Export qz file")},
        {ID_SWRC_CPP, wxT("Export cpp file")});
    m_qz_checkbox = boxes.first;
    m_cpp_checkbox = boxes.second;
    init_ui();
    return lay_out_panel(parent, sizer, width);
}

void Exporter_swrc::init_ui()
{
    m_qz_checkbox->SetValue(m_export_qz);
    m_cpp_checkbox->SetValue(m_export_cpp);
}

void Exporter_swrc::window_closing(wxWindow* parent, bool discard)
{
    parent->PopEventHandler(false);
    if (discard)
        return;
    m_export_qz = m_qz_checkbox->GetValue();
    m_export_cpp = m_cpp_checkbox->GetValue();
}

void Exporter_swrc::update_filename(const wxString& filename, wxString& qz_filename,
                                    wxString& cpp_filename)
{
    const Output_stem stem = split_output_name(filename, {wxT("qz"), wxT("cpp")});
    qz_filename = stem.with(wxT(".qz"));
    cpp_filename = stem.with(wxT(".cpp"));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is fixed
wxString Exporter_swrc::get_src(TSDK::IGenerated_shader* shader, wxString code_type)
{
    shader->get_num_codes(); // ignored on purpose: both codes are trusted to be there
    if (code_type == wxT("cppfile"))
        return from_bytes(Code_text(shader, cpp_code_index).c_str());
    if (code_type == wxT("qzfile"))
        return from_bytes(Code_text(shader, qz_code_index).c_str());
    const wxString message =
        wxT("Internal Error! toviraexport_swrc::get_src: no such code type. [") + code_type +
        wxT("]\n");
    std::fprintf(stderr, "%s", to_bytes(message).c_str());
    return message;
}

bool Exporter_swrc::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(false, [&] { return run_export(app, view); });
}

bool Exporter_swrc::run_export(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    if (!has_single_selection(app, view)) {
        show_warning(wxT("Must have exactly one shader selected"));
        return false;
    }
    if (!require_exportfile_name(wxT("Error! no export file name is specified.")))
        return false;
    wxString qz_name;
    wxString cpp_name;
    update_filename(get_exportfile_name(), qz_name, cpp_name);
    if (!m_export_qz && !m_export_cpp) {
        show_error(wxT("Error! Neither qz nor cpp file creation has been chosen."));
        return false;
    }
    const bool write_qz = m_export_qz && can_export(to_bytes(qz_name).c_str());
    const bool write_cpp = m_export_cpp && can_export(to_bytes(cpp_name).c_str());
    if (!write_qz && !write_cpp)
        return false;

    Export_objects objects;
    objects.take_compiler(app);
    objects.take_node(view);
    if (!objects.node)
        return false;
    const char* name = objects.node->get_name();
    const std::string shader_name = name ? name : "default";
    objects.take_errors();
    Host_ref<TSDK::ICompilation_unit> unit = objects.compile_node(objects.errors.get());
    Host_ref<TSDK::ICompiler_options> options = objects.create_options();
    const char* kind = get_shader_kind(objects.node.get());
    set_option(options.get(), "shader_type", kind ? kind : "surface");
    set_option(options.get(), "shader_name", shader_name);

    // Without a unit (the node does not compile) there is no shader either.
    Host_ref<TSDK::IGenerated_shader> shader =
        adopt(generate_code(unit.get(), get_language(), options.get()));
    const bool generated = static_cast<bool>(shader);
    wxString unused_error;
    if (generated && write_qz)
        save_buffer_to_file(qz_name, get_src(shader.get(), wxT("qzfile")), unused_error);
    if (generated && write_cpp)
        save_buffer_to_file(cpp_name, get_src(shader.get(), wxT("cppfile")), unused_error);
    release_in_order(shader, unit, options);
    return generated;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
