#include "exporter_base/toviraexport_log.h"

#include "exporter_base/bytes.h"

#include <cstdio>

namespace QZ
{
namespace TOVIRAEXPORT
{

Toviraexport_log* Toviraexport_log::P_tovira_log = nullptr;

Toviraexport_log::Toviraexport_log()
    : m_output_device_name(wxT("stderr:")),
      m_output_device(DEVICE_STDERR),
      m_header(wxT("Toviraexport_log: ")),
      m_verbose_mode(false)
{
}

Toviraexport_log* Toviraexport_log::instance()
{
    if (!P_tovira_log)
        P_tovira_log = new Toviraexport_log;
    return P_tovira_log;
}

void Toviraexport_log::out(const wxString& msg) const
{
    out_impl(msg);
}

void Toviraexport_log::vout(const wxString& msg) const
{
    if (m_verbose_mode)
        out_impl(msg);
}

void Toviraexport_log::out_impl(const wxString& msg) const
{
    const std::string header = to_bytes(m_header);
    const std::string text = to_bytes(msg);
    switch (m_output_device) {
    case DEVICE_STDOUT:
        std::fprintf(stdout, "%s%s", header.c_str(), text.c_str());
        break;
    case DEVICE_STDERR:
        std::fprintf(stderr, "%s%s", header.c_str(), text.c_str());
        break;
    case DEVICE_FILE:
        std::fprintf(stderr, "Not yet implemented to output file: %s%s", header.c_str(),
                     text.c_str());
        break;
    case DEVICE_LOG_GUI:
    case DEVICE_NULL:
        break;
    default:
        std::fprintf(stderr, "Internal error: no such output device: %d\n", m_output_device);
    }
}

bool Toviraexport_log::set_output_device(const wxString& name)
{
    struct Named_device {
        const wxChar* name;
        Device device;
    };
    // Standard output is what every other name selects, its own included.
    static const Named_device named_devices[] = {
        {wxT("stderr:"), DEVICE_STDERR},
        {wxT("log_gui:"), DEVICE_LOG_GUI},
        {wxT("null:"), DEVICE_NULL},
    };
    m_output_device = DEVICE_STDOUT;
    m_output_device_name = wxT("stdout:");
    for (const Named_device& named : named_devices) {
        if (name == named.name) {
            m_output_device = named.device;
            m_output_device_name = name;
        }
    }
    return true;
}

wxString Toviraexport_log::get_output_device() const
{
    return m_output_device_name;
}

void Toviraexport_log::set_header(const wxString& header)
{
    m_header = header;
}

wxString Toviraexport_log::get_header() const
{
    return m_header;
}

void Toviraexport_log::set_verbose_mode(bool verbose)
{
    m_verbose_mode = verbose;
}

bool Toviraexport_log::is_verbose_mode() const
{
    return m_verbose_mode;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
