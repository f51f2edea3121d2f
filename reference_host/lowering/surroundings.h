// What surrounds the object: the environment of the scene, or the list of an interface.
#ifndef REFERENCE_HOST_LOWERING_SURROUNDINGS_H
#define REFERENCE_HOST_LOWERING_SURROUNDINGS_H

#include "reference_host/lowering/shader_lowering.h"

#include <string>

namespace reference_host
{

class Surroundings
{
public:
    // Adds the function of the scene's environment, if it has one, to the module.
    Surroundings(const Shader_request& request, Lowering_context& context);

    // False: a text may have a list of environments, and what looks at them stands below its
    // switch.
    bool are_known() const { return m_environment != nullptr; }

    // A float3 with what is seen in a direction from the point of a state, as a surface of that
    // roughness shows it. Adds its statements; the variable gets a name like `name`.
    Expr seen(const std::string& name, const Expr& state, const Expr& direction, const Expr& blur,
              Statements& statements);

    // The light from all around a normal, for diffuse reflection.
    Expr irradiance(const std::string& name, const Expr& state, const Expr& normal,
                    Statements& statements);

private:
    void add_environment();

    const Node* m_environment;
    Lowering_context& m_context;
    std::string m_function;
};

} // namespace reference_host

#endif
