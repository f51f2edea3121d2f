#include "reference_host/generator/library.h"

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

const Library& standard_library()
{
    static const Library library(library_texts());
    return library;
}

} // namespace reference_host
