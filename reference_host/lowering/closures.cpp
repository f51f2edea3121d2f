#include "reference_host/lowering/closures.h"

#include <algorithm>
#include <map>
#include <utility>

namespace reference_host
{
namespace
{

using K = Base_type;

constexpr const char* bsdf = "BSDF";
constexpr const char* surface_shader = "surfaceshader";

const std::vector<Lobe_kind>& lobe_kinds()
{
    const Lobe_parameter energy = {"energy", K::float2};
    const Lobe_parameter alpha = {"alpha", K::float1};
    const Lobe_parameter f0 = {"f0", K::float3};
    const Lobe_parameter f90 = {"f90", K::float3};
    static const std::vector<Lobe_kind> kinds = {
        {"lambert", {}, Looks::around, Lets_through::nothing, Answers::all},
        {"oren_nayar", {{"roughness", K::float1}}, Looks::around, Lets_through::nothing},
        {"burley", {{"roughness", K::float1}}, Looks::around, Lets_through::nothing},
        {"rough_diffuse",
         {{"color", K::float3}, {"roughness", K::float1}},
         Looks::around,
         Lets_through::nothing},
        {"subsurface", {{"radius", K::float3}}, Looks::around, Lets_through::nothing, Answers::all},
        {"translucent", {}, Looks::behind, Lets_through::nothing, Answers::all},
        {"sheen", {{"roughness", K::float1}}, Looks::around, Lets_through::mean_rest},
        {"fuzz", {{"roughness", K::float1}}, Looks::around, Lets_through::mean_rest},
        {"glossy", {f0, f90, alpha, energy}, Looks::mirrored, Lets_through::mean_rest},
        {"dielectric", {{"ior", K::float1}, alpha, energy}, Looks::mirrored, Lets_through::rest},
        {"glossy_metal",
         {f0, f90, {"edge", K::float3}, alpha, energy},
         Looks::mirrored,
         Lets_through::mean_rest},
        {"glossy_power",
         {f0, f90, {"edge", K::float3}, {"exponent", K::float1}, alpha, energy},
         Looks::mirrored,
         Lets_through::mean_rest},
        {"brushed",
         {f0, f90, {"edge", K::float3}, {"alphas", K::float2}, {"tangent", K::float3}, energy},
         Looks::mirrored,
         Lets_through::mean_rest},
        {"filmed",
         {{"n", K::float3},
          {"k", K::float3},
          {"thickness", K::float1},
          {"film", K::float1},
          alpha,
          energy},
         Looks::mirrored,
         Lets_through::mean_rest},
        {"filmed_color",
         {f0,
          f90,
          {"edge", K::float3},
          {"thickness", K::float1},
          {"film", K::float1},
          alpha,
          energy},
         Looks::mirrored,
         Lets_through::mean_rest},
        {"hair",
         {{"tint_R", K::float3},
          {"tint_TT", K::float3},
          {"tint_TRT", K::float3},
          {"ior", K::float1},
          {"roughness_R", K::float2},
          {"roughness_TT", K::float2},
          {"roughness_TRT", K::float2},
          {"tilt", K::float1},
          {"absorption", K::float3},
          {"along", K::float3},
          alpha,
          energy},
         Looks::mirrored,
         Lets_through::nothing},
        {"transmitted",
         {{"ior", K::float1}, alpha, energy},
         Looks::through,
         Lets_through::rest,
         Answers::surroundings},
        {"seen_through", {}, Looks::ahead, Lets_through::nothing, Answers::all_surroundings},
    };
    return kinds;
}

const Lobe_kind* find_lobe_kind(const std::string& name)
{
    for (const Lobe_kind& kind : lobe_kinds())
        if (name == kind.name)
            return &kind;
    return nullptr;
}

// The other functions: what they take (none: any closure) and return.
struct Combination {
    const char* name;
    std::vector<Base_type> parameters;
    const char* result; // null: the type of the first argument
};

const std::vector<Combination>& combinations()
{
    static const std::vector<Combination> list = {
        {"nothing", {}, bsdf},
        {"layer", {K::none, K::none}, bsdf},
        {"blend", {K::none, K::none, K::float1}, nullptr},
        {"sum", {K::none, K::none}, nullptr},
        {"scaled", {K::none, K::float3}, nullptr},
        {"opaque", {K::none}, nullptr},
        {"surface", {K::none, K::float3, K::float1}, surface_shader},
        {"thin_film", {K::float1, K::float1}, bsdf},
    };
    return list;
}

const Combination* find_combination(const std::string& name)
{
    for (const Combination& combination : combinations())
        if (name == combination.name)
            return &combination;
    return nullptr;
}

Expr fitted(const Expr& argument, Base_type wanted)
{
    if (wanted == K::none ? is_closure(argument->type) : argument->type == wanted)
        return argument;
    if (wanted != K::none && component_count(argument->type) == 1)
        return construct(wanted, {argument});
    throw Notation_error("wrong type of argument");
}

Expr product(const Expr& a, const Expr& b)
{
    return binary(Operator::multiply, a, b);
}

Expr one_minus(const Expr& value)
{
    return binary(Operator::subtract, literal(1.0), value);
}

Expr white()
{
    return literal(K::float3, {1.0, 1.0, 1.0});
}

bool same(const Expr& a, const Expr& b)
{
    return a == b || (a->op == b->op && a->oper == b->oper && a->builtin == b->builtin &&
                      a->type == b->type && a->name == b->name && a->numbers == b->numbers &&
                      std::equal(a->operands.begin(), a->operands.end(), b->operands.begin(),
                                 b->operands.end(), same));
}

// A lobe below a thin film: what of microfacets reflects in colours, all else as it is.
Expr below_film(const Expr& lobe, const Expr& film)
{
    const std::vector<Expr>& old = lobe->operands;
    const Expr none = literal(K::float3, {});
    std::vector<Expr> made(old.begin(), old.begin() + 3); // weight, tint, normal
    const auto add = [&](std::initializer_list<Expr> further) {
        made.insert(made.end(), further.begin(), further.end());
    };
    if (lobe->name == "dielectric")
        add({construct(K::float3, {old[3]}), none});
    else if (lobe->name == "glossy")
        add({old[3], old[4], none});
    else if (lobe->name == "glossy_metal" || lobe->name == "glossy_power")
        add({old[3], old[4], old[5]});
    else
        return lobe;
    add({film->operands[0], film->operands[1], old[old.size() - 2], old.back()});
    return closure_call(lobe->name == "dielectric" ? "filmed" : "filmed_color", std::move(made));
}

class Flattening
{
public:
    explicit Flattening(const std::function<Expr(const Lobe&)>& rest_of) : m_rest_of(rest_of) {}

    Flat_surface surface(const Expr& value)
    {
        add_surface(value, white());
        if (!m_flat.emission) {
            m_flat.emission = literal(K::float3, {});
            m_flat.opacity = literal(1.0);
        }
        return std::move(m_flat);
    }

private:
    // Blended surfaces show each as much of what it has as its opacity lets it.
    void add_surface(const Expr& value, const Expr& weight)
    {
        const std::vector<Expr>& parts = value->operands;
        if (value->name == "blend") {
            add_surface(parts[1], product(weight, parts[2]));
            const Expr emission = m_flat.emission;
            const Expr opacity = m_flat.opacity;
            m_flat.emission = nullptr;
            add_surface(parts[0], product(weight, one_minus(parts[2])));
            m_flat.emission = call(Builtin::mix, {m_flat.emission, emission, parts[2]});
            m_flat.opacity = call(Builtin::mix, {m_flat.opacity, opacity, parts[2]});
            return;
        }
        if (value->name != "surface") {
            m_flat.emission = literal(K::float3, {});
            m_flat.opacity = literal(1.0);
            return;
        }
        add(parts[0], weight);
        m_flat.emission = parts[1];
        m_flat.opacity = parts[2];
    }

    // Adds the lobes of a closure and returns what they let through.
    Expr add(const Expr& closure, const Expr& weight)
    {
        const std::vector<Expr>& parts = closure->operands;
        const std::string& name = closure->name;
        if (closure->op == Op::choose) {
            const Expr part = choose(parts[0], literal(1.0), literal(0.0));
            return blend(parts[2], parts[1], part, weight);
        }
        if (name == "nothing" || name == "thin_film" || is_zero(weight))
            return white();
        if (name == "layer" && parts[0]->name == "thin_film") {
            const Expr above = std::exchange(m_film, parts[0]);
            const Expr rest = add(parts[1], weight);
            m_film = above;
            return rest;
        }
        if (name == "layer") {
            const Expr rest = add(parts[0], weight);
            return product(rest, add(parts[1], product(weight, rest)));
        }
        if (name == "blend")
            return blend(parts[0], parts[1], parts[2], weight);
        if (name == "scaled")
            return add(parts[0], product(weight, parts[1]));
        if (name == "opaque") {
            add(parts[0], weight);
            return literal(K::float3, {});
        }
        if (name == "sum") {
            const Expr rest = add(parts[0], weight);
            return product(rest, add(parts[1], weight));
        }
        return add_lobe(m_film ? below_film(closure, m_film) : closure, weight);
    }

    Expr blend(const Expr& background, const Expr& foreground, const Expr& part, const Expr& weight)
    {
        const Expr front = add(foreground, product(weight, part));
        const Expr back = add(background, product(weight, one_minus(part)));
        return call(Builtin::mix, {back, front, part});
    }

    Expr add_lobe(const Expr& closure, const Expr& weight)
    {
        Lobe lobe = {
            find_lobe_kind(closure->name), closure,
            closure->operands[2],          {closure->operands.begin() + 3, closure->operands.end()},
            closure->operands[0],          nullptr};
        lobe.weight = product(product(weight, lobe.own_weight), closure->operands[1]);
        if (!is_zero(lobe.weight))
            merge(lobe);
        if (is_zero(lobe.own_weight))
            return white();
        if (lobe.kind->lets_through == Lets_through::nothing)
            return literal(K::float3, {});
        const auto known = std::find_if(m_flat.tops.begin(), m_flat.tops.end(),
                                        [&](const Lobe& top) { return top.closure == closure; });
        if (known == m_flat.tops.end())
            m_flat.tops.push_back(lobe);
        return m_rest_of(lobe);
    }

    // Lobes that differ in their weights alone are one.
    void merge(const Lobe& lobe)
    {
        for (Lobe& known : m_flat.lobes)
            if (known.kind == lobe.kind && same(known.normal, lobe.normal) &&
                std::equal(known.arguments.begin(), known.arguments.end(), lobe.arguments.begin(),
                           lobe.arguments.end(), same)) {
                known.weight = binary(Operator::add, known.weight, lobe.weight);
                return;
            }
        m_flat.lobes.push_back(lobe);
    }

    const std::function<Expr(const Lobe&)>& m_rest_of;
    Expr m_film; // the one that lies on what is added; null without
    Flat_surface m_flat;
};

} // namespace

bool is_closure(const Code_type& type)
{
    return type.structure == bsdf || type.structure == surface_shader;
}

Expr nothing(const Code_type& type)
{
    return call("nothing", type, {});
}

bool is_closure_function(const std::string& name)
{
    return find_lobe_kind(name) || find_combination(name);
}

Expr closure_call(const std::string& function, std::vector<Expr> arguments)
{
    std::vector<Base_type> wanted = {K::float1, K::float3, K::float3};
    const Combination* combination = find_combination(function);
    if (combination)
        wanted = combination->parameters;
    else
        for (const Lobe_parameter& parameter : find_lobe_kind(function)->parameters)
            wanted.push_back(parameter.type);
    if (arguments.size() != wanted.size())
        throw Notation_error("wrong number of arguments for \"" + function + "\"");
    std::transform(arguments.begin(), arguments.end(), wanted.begin(), arguments.begin(), fitted);
    const Code_type type = combination && !combination->result
                               ? arguments[0]->type
                               : Code_type(combination ? combination->result : bsdf);
    return call(function, type, std::move(arguments));
}

Flat_surface flattened(const Expr& surface, const std::function<Expr(const Lobe&)>& rest_of)
{
    return Flattening(rest_of).surface(surface);
}

} // namespace reference_host
