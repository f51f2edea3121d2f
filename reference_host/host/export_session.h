// The host's side of one export: every object that the plug-in gets, and what became of it.
//
// Life of a session:
//   1. Construction with the scene. application() and view() are what export_shader is called with.
//   2. The plug-in exports.
//   3. record() and reference_findings() tell what happened.
// The session ends after the exporter's last call; objects that the plug-in still holds die with
// it.
#ifndef REFERENCE_HOST_HOST_EXPORT_SESSION_H
#define REFERENCE_HOST_HOST_EXPORT_SESSION_H

#include "reference_host/host/compiler_objects.h"
#include "sdk/itovira.h"

#include <string>
#include <vector>

namespace reference_host
{

// What happened at the user's side of an export and excuses references that were not released.
struct Export_events {
    bool file_name_empty = false;   // the export-file field was
    bool overwrite_refused = false; // for one file at least
};

class Export_session
{
public:
    // The graph of the scene must outlive the session.
    explicit Export_session(Export_scene scene);
    Export_session(const Export_session&) = delete;
    Export_session& operator=(const Export_session&) = delete;
    ~Export_session();

    QZ::TSDK::ITovira* application();
    QZ::TSDK::IGraph_view* view();

    const Compiler_record& record() const { return m_record; }

    // One line for each host object that was misused: not released, released twice, or used after
    // its release. The references that exporters keep on purpose are left out.
    std::vector<std::string> reference_findings(const Export_events& events) const;

private:
    Export_scene m_scene;
    Compiler_record m_record;
    Ledger m_ledger;
    Graph_objects m_objects;
    Graph_view& m_view;
    QZ::TSDK::ITovira& m_application;
};

} // namespace reference_host

#endif
