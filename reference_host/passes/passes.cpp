#include "reference_host/passes/passes.h"

#include "reference_host/shading/verifier.h"

namespace reference_host
{

const std::vector<Pass>& passes()
{
    static const std::vector<Pass> list = {
        {"specialise", specialise},   {"inline", inline_lets}, {"prune", prune},
        {"check", check_expressible}, {"name", assign_names},
    };
    return list;
}

void run_passes(Module& module, const Pass_settings& settings, const std::string& last)
{
    for (const Pass& pass : passes()) {
        pass.run(module, settings);
#ifndef NDEBUG
        verify(module); // costs as much as a pass; after the lowering it is always done
#endif
        if (pass.name == last)
            return;
    }
}

void specialise(Module& module, const Pass_settings& settings)
{
    const auto decided = [&](const Expr& expression) {
        if (expression->op != Op::variable || expression->type != Base_type::boolean)
            return expression;
        const auto value = settings.switches.find(find_switch(expression->name));
        return value == settings.switches.end() ? expression : boolean_literal(value->second);
    };
    for (Function& function : module.functions) {
        replace(function.body, decided);
        if (function.of_library)
            inline_result(function.body); // conditions that do not hold may leave it alone
    }
}

void check_expressible(Module& module, const Pass_settings&)
{
    if (!module.has_refusals)
        return;
    for (const Function& function : module.functions)
        visit(function.body, [](const Expression& expression) {
            if (expression.op == Op::refused)
                throw Refusal(expression.origin, expression.name);
        });
}

} // namespace reference_host
