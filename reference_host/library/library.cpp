#include "reference_host/library/library.h"

#include "reference_host/library/library_scope.h"

namespace reference_host
{

Library::Library(const std::vector<Shade_text>& files)
{
    for (const Shade_text& file : files)
        for (const Shade_item& item : shade_items(file)) {
            if (item.kind != Item_kind::function)
                continue;
            Library_function function{parse_head(item.whole), item.whole};
            if (!m_by_name.emplace(function.head.name, m_functions.size()).second)
                throw Shade_error(item.whole.place,
                                  "the function \"" + function.head.name + "\" exists twice");
            m_functions.push_back(std::move(function));
        }
}

const Library_function* Library::find(const std::string& name) const
{
    const auto found = m_by_name.find(name);
    return found == m_by_name.end() ? nullptr : &m_functions[found->second];
}

const Library_instance& Library::instance(const Library_function& function,
                                          const Code_type& generic) const
{
    const auto known = m_instances.find({&function, generic.base});
    if (known != m_instances.end())
        return known->second;
    Library_scope scope(*this, generic);
    Library_instance made;
    made.function = parse_function(function.text, scope);
    made.function.of_library = true;
    inline_result(made.function.body);
    made.calls = scope.used();
    return m_instances[{&function, generic.base}] = std::move(made);
}

const Library& standard_library()
{
    static const Library library(library_texts());
    return library;
}

} // namespace reference_host
