#include "reference_host/library/library_names.h"

#include "reference_host/library/library.h"

namespace reference_host
{

const Reserved_names& library_names()
{
    static const Reserved_names reserved = [] {
        Reserved_names made = notation_names();
        for (const Library_function& function : standard_library().functions())
            made.taken.insert(function.head.name);
        return made;
    }();
    return reserved;
}

} // namespace reference_host
