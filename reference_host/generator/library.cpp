#include "reference_host/generator/library.h"

#include <unordered_map>

namespace reference_host
{

const std::vector<Library_function>& all_library_functions()
{
    static const std::vector<Library_function> functions = [] {
        std::vector<Library_function> made;
        for (const Library_texts& group : {color_library(), math_library(), noise_library(),
                                           pattern_library(), light_library(), surface_library()})
            for (std::size_t i = 0; i < group.count; ++i)
                made.push_back({parse_head(group.texts[i]), group.texts[i]});
        return made;
    }();
    return functions;
}

const Library_function* find_library_function(const std::string& name)
{
    static const auto by_name = [] {
        std::unordered_map<std::string, const Library_function*> made;
        for (const Library_function& function : all_library_functions())
            made[function.head.name] = &function;
        return made;
    }();
    const auto found = by_name.find(name);
    return found == by_name.end() ? nullptr : found->second;
}

} // namespace reference_host
