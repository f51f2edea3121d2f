// The words of a module's head, shared by its printer and its reader: one row for each field.
#ifndef REFERENCE_HOST_SHADING_MODULE_FIELDS_H
#define REFERENCE_HOST_SHADING_MODULE_FIELDS_H

#include "reference_host/shading/module.h"

#include <string>

namespace reference_host
{

template<class Owner>
struct Text_field {
    const char* word;
    std::string Owner::*text;
};

inline constexpr const char* role_words[] = {"surface", "pattern", "light", "volume"};

inline constexpr Text_field<Module> source_fields[] = {
    {"document", &Module::document},
    {"folder", &Module::folder},
    {"node", &Module::node},
    {"category", &Module::category},
};

inline constexpr Text_field<Module_parameter> parameter_fields[] = {
    {"kind", &Module_parameter::kind},     {"label", &Module_parameter::label},
    {"folder", &Module_parameter::folder}, {"description", &Module_parameter::description},
    {"light", &Module_parameter::light},   {"aspect", &Module_parameter::aspect},
};

struct Number_field {
    const char* word;
    std::optional<double>& (*number)(Module_parameter&);
};

inline constexpr Number_field number_fields[] = {
    {"min", [](Module_parameter& p) -> std::optional<double>& { return p.range.min; }},
    {"max", [](Module_parameter& p) -> std::optional<double>& { return p.range.max; }},
    {"step", [](Module_parameter& p) -> std::optional<double>& { return p.step; }},
};

struct Flag_field {
    const char* word;
    bool Module_parameter::*flag;
};

inline constexpr Flag_field flag_fields[] = {
    {"scene", &Module_parameter::of_scene},
    {"constant", &Module_parameter::constant},
};

inline constexpr Text_field<Module_texture> texture_fields[] = {
    {"file", &Module_texture::file},
    {"label", &Module_texture::label},
    {"folder", &Module_texture::folder},
};

} // namespace reference_host

#endif
