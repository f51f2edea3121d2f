// Bytes of the host as text of the window.
#ifndef REFERENCE_HOST_WINDOW_WX_TEXT_H
#define REFERENCE_HOST_WINDOW_WX_TEXT_H

#include "exporter_base/bytes.h"

#include <string>

namespace reference_host
{

using QZ::TOVIRAEXPORT::to_bytes;

inline wxString to_text(const std::string& bytes)
{
    return QZ::TOVIRAEXPORT::from_bytes(bytes.c_str());
}

} // namespace reference_host

#endif
