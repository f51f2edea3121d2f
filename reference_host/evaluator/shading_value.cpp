#include "reference_host/evaluator/shading_value.h"

#include "reference_host/shading/shading_state.h"

#include <algorithm>

namespace reference_host
{

Shading_value::Shading_value(const Code_type& value_type, std::initializer_list<double> values)
    : type(value_type)
{
    std::copy_n(values.begin(), std::min(values.size(), numbers.size()), numbers.begin());
}

Shading_value structure_value(const std::string& structure)
{
    Shading_value value{Code_type(structure)};
    if (const Structure* found = find_structure(structure))
        for (const Variable_declaration& field : found->fields)
            value.fields[field.name] = Shading_value(field.type);
    return value;
}

} // namespace reference_host
