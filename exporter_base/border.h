// The border to the host: no exception crosses it.
#ifndef EXPORTER_BASE_BORDER_H
#define EXPORTER_BASE_BORDER_H

#include <cstdio>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Runs what an operation of the host's interface does. An exception inside (memory running out, in
// practice) is noted on standard error, without the log, which needs memory itself, and becomes
// `failure`.
template<typename Result, typename Body>
Result at_border(Result failure, Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        std::fputs("Toviraexport_log: Error! the operation ran out of resources.\n", stderr);
    }
    return failure;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
