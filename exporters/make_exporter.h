// Makes the exporters of the table.
#ifndef EXPORTERS_MAKE_EXPORTER_H
#define EXPORTERS_MAKE_EXPORTER_H

#include "exporter_base/exporter_base.h"

#include <cstddef>
#include <memory>

namespace QZ
{
namespace TOVIRAEXPORT
{

// A new exporter for a row of exporters/exporter_table.h, initialised; null for an unknown row.
// Throws what the exporter's constructor and initialize throw: memory may run out.
std::unique_ptr<Exporter_base> make_exporter(size_t row);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
