#include "tests/generator/same_module.h"

#include <algorithm>

namespace generation
{
namespace
{

using namespace reference_host;

bool same(const Origin* a, const Origin* b)
{
    return (!a || !b) ? a == b
                      : a->name == b->name && a->place.file == b->place.file &&
                            a->place.line == b->place.line;
}

bool same(const Expr& a, const Expr& b)
{
    if (!a || !b)
        return a == b;
    const bool same_origin = a->op != Op::refused || same(a->origin, b->origin);
    return a->op == b->op && a->oper == b->oper && a->builtin == b->builtin && a->type == b->type &&
           a->name == b->name && a->numbers == b->numbers && same_origin &&
           std::equal(a->operands.begin(), a->operands.end(), b->operands.begin(),
                      b->operands.end(), [](const Expr& x, const Expr& y) { return same(x, y); });
}

std::string difference(const Statements& a, const Statements& b)
{
    if (a.size() != b.size())
        return "number of statements";
    for (std::size_t i = 0; i < a.size(); ++i) {
        const Statement& x = a[i];
        const Statement& y = b[i];
        const std::string where = "statement " + std::to_string(i + 1) + " " + x.name;
        if (x.kind != y.kind || x.name != y.name || x.type != y.type || x.oper != y.oper ||
            !same(x.target, y.target) || !same(x.value, y.value))
            return where;
        for (const auto& [inner, other] :
             {std::pair(&x.body, &y.body), std::pair(&x.otherwise, &y.otherwise)}) {
            const std::string found = difference(*inner, *other);
            if (!found.empty())
                return where + ": " + found;
        }
    }
    return "";
}

bool same_declaration(const Variable_declaration& a, const Variable_declaration& b)
{
    return a.type == b.type && a.name == b.name;
}

std::string difference(const Function& a, const Function& b)
{
    const bool same_head = a.type == b.type && a.name == b.name && a.of_library == b.of_library &&
                           std::equal(a.parameters.begin(), a.parameters.end(),
                                      b.parameters.begin(), b.parameters.end(), same_declaration);
    return same_head ? difference(a.body, b.body) : "head";
}

bool same_parameter(const Module_parameter& a, const Module_parameter& b)
{
    return a.name == b.name && a.label == b.label && a.folder == b.folder &&
           a.description == b.description && a.kind == b.kind && same(a.value, b.value) &&
           a.range.min == b.range.min && a.range.max == b.range.max && a.step == b.step &&
           a.of_scene == b.of_scene && a.constant == b.constant;
}

bool same_texture(const Module_texture& a, const Module_texture& b)
{
    return a.name == b.name && a.label == b.label && a.folder == b.folder && a.file == b.file &&
           a.cube == b.cube;
}

bool same_name(const Given_name& a, const Given_name& b)
{
    return a.name == b.name && a.wish == b.wish;
}

template<class List, class Same>
bool all_same(const List& a, const List& b, const Same& same_one)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same_one);
}

} // namespace

std::string first_difference(const Module& a, const Module& b)
{
    if (a.role != b.role || a.name != b.name || a.document != b.document || a.node != b.node ||
        a.category != b.category || a.folder != b.folder ||
        a.without_counterpart != b.without_counterpart)
        return "head";
    if (!all_same(a.names, b.names, same_name))
        return "names";
    if (!all_same(a.parameters, b.parameters, same_parameter))
        return "parameters";
    if (!all_same(a.textures, b.textures, same_texture))
        return "textures";
    if (a.functions.size() != b.functions.size())
        return "number of functions";
    for (std::size_t i = 0; i < a.functions.size(); ++i) {
        const std::string found = difference(a.functions[i], b.functions[i]);
        if (!found.empty())
            return a.functions[i].name + ": " + found;
    }
    return "";
}

} // namespace generation
