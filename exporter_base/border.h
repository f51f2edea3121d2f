// The border to the host: no exception crosses it.
#ifndef EXPORTER_BASE_BORDER_H
#define EXPORTER_BASE_BORDER_H

#include "exporter_base/toviraexport_log.h"

#include <exception>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Runs what an operation of the host's interface does. An exception inside (memory running out, in
// practice) is noted in the log and becomes `failure`.
template<typename Result, typename Body>
Result at_border(Result failure, Body body) noexcept
{
    try {
        return body();
    } catch (const std::exception&) {
        Toviraexport_log::instance()->out(wxT("Error! the operation ran out of resources.\n"));
    }
    return failure;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
