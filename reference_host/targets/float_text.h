// Numbers as texts that read back the same: always with a decimal point, and never in the manner of
// a locale.
#ifndef REFERENCE_HOST_TARGETS_FLOAT_TEXT_H
#define REFERENCE_HOST_TARGETS_FLOAT_TEXT_H

#include <string>

namespace reference_host
{

// The shortest text that reads back as the float. A number that no float can hold becomes the
// nearest one that it can.
std::string float_text(double number);

} // namespace reference_host

#endif
