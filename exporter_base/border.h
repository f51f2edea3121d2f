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
// `failure`; the second form has nothing to return.
template<typename Result, typename Body>
Result at_border(Result failure, Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        std::fputs("Error! toviraexport gave up an operation after an exception.\n", stderr);
    }
    return failure;
}

template<typename Body>
void at_border(Body body) noexcept
{
    at_border(false, [&] {
        body();
        return true;
    });
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
