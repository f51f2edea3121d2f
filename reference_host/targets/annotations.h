// Annotations of effect parameters, under the names of the target program.
//
// The generator's own names are UIName, UIWidget, UIMin, UIMax, UIStep, UIFolder and UIHelp. An
// annotation map says what the target calls them; it is an XML file:
//
//     <annotations>
//       <annotation name="UIName" target="SasUiLabel"/>
//     </annotations>
//
// Without a file the built-in map holds. It knows all of them but UIHelp; for a target that reads
// standard annotations and semantics (SAS) it knows no UIFolder either. Annotations that are not in
// the map are left out, or keep their names where the caller asks for them too.
#ifndef REFERENCE_HOST_TARGETS_ANNOTATIONS_H
#define REFERENCE_HOST_TARGETS_ANNOTATIONS_H

#include "reference_host/options/options.h"
#include "reference_host/shading/module.h"

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

class Annotations
{
public:
    // A file that is missing leaves the built-in map; one that is not a map does, too, with a
    // warning. Rows whose target cannot be an annotation's name are left out, with a warning.
    Annotations(const Text_options& options, const std::string& folder, Diagnostics& diagnostics);

    // The block "< ... >" on lines of its own, with its end; empty when there is nothing to say.
    // Before it, for what a target may take from a light of its scene, the semantic: " : POSITION".
    std::string of(const Module_parameter& parameter) const;
    std::string of(const Module_texture& texture, const std::string& path) const;

private:
    void add(std::vector<std::string>& lines, const std::string& name,
             const std::string& value) const;
    void add(std::vector<std::string>& lines, const std::string& name, double value) const;
    void add_line(std::vector<std::string>& lines, const std::string& type, const std::string& name,
                  const std::string& value) const;
    static void add_light(std::vector<std::string>& lines, const Module_parameter& parameter);
    void read_map(const std::string& file, Diagnostics& diagnostics);

    bool m_sas;
    std::map<std::string, std::string> m_names;
    std::string m_resource_name;
    bool m_keeps_unmapped;
};

// A text between quotes, with what would end it escaped.
std::string quoted(const std::string& text);

} // namespace reference_host

#endif
