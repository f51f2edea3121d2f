// The library's one diagnostic channel, for warnings that must not interrupt the user.
//
// Messages carry their own line ends. In practice everything goes to standard error; the other
// devices are for a debugging caller. Used on the user-interface thread only; nothing is locked.
#ifndef EXPORTER_BASE_TOVIRAEXPORT_LOG_H
#define EXPORTER_BASE_TOVIRAEXPORT_LOG_H

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

class Toviraexport_log
{
public:
    // The one log, made by the first call and kept until the process ends.
    static Toviraexport_log* instance();

    virtual ~Toviraexport_log() = default;

    // Writes a message, always.
    void out(const wxString& msg) const;

    // Writes a message when verbose mode is on.
    void vout(const wxString& msg) const;

    // Writes header and message to the selected device.
    void out_impl(const wxString& msg) const;

    // Selects the device by its exact name: "stdout:", "stderr:", "log_gui:" (swallows everything,
    // there is no log window here) or "null:". Any other name, a file's too, selects standard
    // output under the name "stdout:". Always true.
    bool set_output_device(const wxString& name);
    wxString get_output_device() const;

    // The text in front of every message.
    void set_header(const wxString& header);
    wxString get_header() const;

    void set_verbose_mode(bool verbose);
    bool is_verbose_mode() const;

protected:
    enum Device {
        DEVICE_STDOUT = 0,
        DEVICE_STDERR = 1,
        DEVICE_LOG_GUI = 2,
        DEVICE_FILE = 3, // no name selects it
        DEVICE_NULL = 4
    };

    Toviraexport_log();

    wxString m_output_device_name;
    int m_output_device; // a Device
    wxString m_header;
    bool m_verbose_mode;

private:
    static Toviraexport_log* P_tovira_log;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
