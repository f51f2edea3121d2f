// The command line that does what the window is about to do.
#ifndef REFERENCE_HOST_WINDOW_COMMAND_TEXT_H
#define REFERENCE_HOST_WINDOW_COMMAND_TEXT_H

#include "reference_host/app/export_request.h"

#include <string>
#include <vector>

namespace reference_host
{

// A word for a shell: quoted where it has to be.
std::string shell_word(const std::string& text);

// NAME[:TYPE[:KEY=VALUE,...]], as the option --light takes it.
std::string light_text(const Light_request& light);

// R,G,B,A, as the option --ambient takes it.
std::string color_text(const std::array<float, 4>& color);

// "shader-export export FILE --exporter ... --output ...", with the options that differ from the
// usual ones.
std::string export_command_text(const Scene_request& request, const std::string& exporter,
                                const std::string& output);

// The options whose value differs from the one of that name in `untouched`.
std::vector<Option_setting> changed_options(const std::vector<Option_setting>& options,
                                            const std::vector<Option_setting>& untouched);

} // namespace reference_host

#endif
