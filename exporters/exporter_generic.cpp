// Targets and settings of the generic exporter.
#include "exporters/exporter_generic.h"

#include "exporter_base/bytes.h"
#include "exporter_base/toviraexport_log.h"
#include "exporters/exporter_table.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

struct Target {
    const Exporter_facts& facts;
    const wxChar* wildcard;        // of get_exportfile_wildcard
    const wxChar* dialog_wildcard; // of the dialogs
    const wxChar* extension;
    bool extension_autoadd;
    bool has_annotation_map;
};

// The index of a row is the Target_language. The dialog of GLSL offers one extension more than its
// wildcard, and adds none: the names of its two files are made from the chosen one.
constexpr Target targets[] = {
    {facts_of<Exporter_generic, Exporter_generic::TARGET_CGFX>(),
     wxT("Custom CgFX (*.cgfx)|*.cgfx|"), wxT("Custom CgFX (*.cgfx)|*.cgfx|"), wxT("cgfx"), true,
     true},
    {facts_of<Exporter_generic, Exporter_generic::TARGET_HLSL>(),
     wxT("Custom HLSL FX (*.fx)|*.fx|"), wxT("Custom HLSL FX (*.fx)|*.fx|"), wxT("fx"), true, true},
    {facts_of<Exporter_generic, Exporter_generic::TARGET_GLSL>(), wxT("Custom GLSL (*.gl)|*.gl|"),
     wxT("Custom GLSL (*.gl;*.glsl)|*.gl;*.glsl|"), wxT("gl"), false, false},
};

// The row of a target; null for a value without one.
const Target* find_target(int target)
{
    constexpr int count = sizeof targets / sizeof targets[0];
    return target >= 0 && target < count ? &targets[target] : nullptr;
}

const char* target_name(int target)
{
    const Target* row = find_target(target);
    return row ? row->facts.name : nullptr;
}

Generic_options default_options(int target)
{
    Generic_options options;
    for (const Generic_control& row : generic_controls) {
        const Generic_default& value = row.by_default;
        if (row.text)
            options.*row.text =
                target == Exporter_generic::TARGET_CGFX ? value.cgfx_text : value.text;
        else if (row.choice)
            options.*row.choice = value.number;
        else
            options.*row.flag = value.number != 0;
    }
    return options;
}

} // namespace

Exporter_generic::Exporter_generic(Target_language target)
    : Exporter_base(target_name(target)),
      m_target(target),
      m_options(default_options(target)),
      m_event_dispatcher(new Event_dispatcher(this))
{
}

// The annotation map's settings are registered for GLSL too, which never shows its dialog.
void Exporter_generic::initialize()
{
    register_exportfile_setting();
    register_file_setting(wxT("annotationfile"), wxEmptyString);
    const Target* row = find_target(m_target);
    if (!row) {
        Toviraexport_log::instance()->out(
            wxT("Error! Exporter_generic::initialize: no such target language support.\n"));
        return;
    }
    register_chooser_properties(wxT("exportfile"),
                                {row->dialog_wildcard + get_exportfile_wildcard_all(),
                                 {row->extension, wxT("*")},
                                 get_chooser_caption(wxT("open")),
                                 get_chooser_caption(wxT("save")),
                                 row->extension_autoadd});
    if (row->has_annotation_map) {
        const wxString language = from_bytes(get_language());
        register_chooser_properties(
            wxT("annotationfile"),
            {wxT("Annotation map file (*.axml)|*.axml|") + get_exportfile_wildcard_all(),
             {wxT("axml"), wxT("*")},
             wxT("Choose a ") + language + wxT(" annotation map file"),
             wxT("Save a ") + language + wxT(" annotation map file"),
             true});
    }
}

const char* Exporter_generic::get_language() const
{
    const Target* row = find_target(m_target);
    return row ? row->facts.language : nullptr;
}

wxString Exporter_generic::get_exportfile_wildcard() const
{
    const Target* row = find_target(m_target);
    return (row ? wxString(row->wildcard) : wxString()) + get_exportfile_wildcard_all();
}

wxString Exporter_generic::get_extension(int index) const
{
    const Target* row = find_target(m_target);
    return row && index == 0 ? wxString(wxT(".")) + row->extension : wxString(wxT("*"));
}

wxString Exporter_generic::get_chooser_caption(const wxString& mode) const
{
    const wxString verb = mode == wxT("open") ? wxT("Choose a ") : wxT("Save a ");
    return verb + from_bytes(get_language()) + wxT(" file");
}

} // namespace TOVIRAEXPORT
} // namespace QZ
