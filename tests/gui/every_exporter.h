// The exporters whose panels and dialogs are tested, those off the registry included.
#ifndef TESTS_GUI_EVERY_EXPORTER_H
#define TESTS_GUI_EVERY_EXPORTER_H

#include "exporter_base/exporter_base.h"

#include <memory>
#include <vector>

namespace QZ
{
namespace TEST
{

// New exporters, initialised, one of each kind and target.
std::vector<std::unique_ptr<TOVIRAEXPORT::Exporter_base>> make_every_exporter();

} // namespace TEST
} // namespace QZ

#endif
