// The table of exporters: one row each, and the only list of them.
//
// The registry offers its rows in this order; tests and programs of the project read the rest from
// it. A new exporter is a row here, a pair of files, a page in docs/targets/ and a test.
//
// The header needs no code of the library: a program that only reads the table links none of it.
#ifndef EXPORTERS_EXPORTER_TABLE_H
#define EXPORTERS_EXPORTER_TABLE_H

#include <array>
#include <cstddef>
#include <tuple>

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_3dsmax;
class Exporter_catia;
class Exporter_default;
class Exporter_fxcomposer;
class Exporter_generic;
class Exporter_maya;
class Exporter_swrc;
class Exporter_xsi;

// One file that an exporter writes.
struct Output_file {
    const char* suffix;  // after the name that the user chose; null: there is no such file
    const char* text;    // what it holds
    const char* checker; // the kind by which scripts/accept.sh knows the compilers that check it
};

// The public facts of an exporter.
struct Exporter_facts {
    const char* name;     // for people; a part of its settings' keys
    const char* language; // as the host sees it; a part of the keys, too
    bool offered;         // by the registry; the rest is built with the library only
    const char* kinds;    // of shaders that it exports, separated by spaces
    Output_file files[2]; // in the order in which they are written
};

// A row: the facts, and how exporters/make_exporter.cpp makes the exporter: of this class, for the
// target of this number where the class serves several.
template<typename Exporter, int... target>
struct Exporter_row {
    Exporter_facts facts;
};

// 3ds Max's text "Cg and HLSL" is wrong (it writes HLSL only), but is part of users' settings.
constexpr std::tuple exporter_table{
    Exporter_row<Exporter_3dsmax>{{"Autodesk 3ds Max legacy (HLSL)",
                                   "Cg and HLSL",
                                   true,
                                   "surface environment lens",
                                   {{".fx", "HLSL FX", "hlsl"}}}},
    Exporter_row<Exporter_catia>{
        {"CATIA (CgFX)", "Cg", true, "surface", {{".fx", "CgFX", "catia"}}}},
    Exporter_row<Exporter_fxcomposer>{{"FX Composer (HLSL/CgFX)",
                                       "Cg and HLSL",
                                       true,
                                       "surface",
                                       {{".cgfx", "CgFX", "cgfx"}, {".fx", "HLSL FX", "hlsl"}}}},
    Exporter_row<Exporter_maya>{
        {"Autodesk Maya (CgFX)", "CgFX", true, "surface", {{".cgfx", "CgFX", "cgfx"}}}},
    Exporter_row<Exporter_xsi>{
        {"Autodesk Softimage (CgFX)", "CgFX", true, "surface", {{".cgfx", "CgFX", "cgfx"}}}},
    Exporter_row<Exporter_generic, 0>{{"Custom CgFX",
                                       "CgFX",
                                       true,
                                       "surface environment lens light volume",
                                       {{".cgfx", "CgFX", "cgfx"}}}},
    Exporter_row<Exporter_generic, 1>{
        {"Custom HLSL FX", "HLSL", true, "surface", {{".fx", "HLSL FX", "hlsl"}}}},
    Exporter_row<Exporter_generic, 2>{
        {"Custom GLSL",
         "GLSL",
         true,
         "surface",
         {{"_v.gl", "GLSL vertex shader", "glsl"}, {"_f.gl", "GLSL fragment shader", "glsl"}}}},
    Exporter_row<Exporter_swrc>{{"Corvane",
                                 "Swrc",
                                 false,
                                 "surface environment lens light volume",
                                 {{".qz", "qz scene", "qz"}, {".cpp", "C++ source", "cpp"}}}},
    Exporter_row<Exporter_default>{{"default exporter", "none", false, "", {}}},
};

// The facts of one exporter.
template<typename Exporter, int... target>
constexpr const Exporter_facts& facts_of()
{
    return std::get<Exporter_row<Exporter, target...>>(exporter_table).facts;
}

// The facts of all, by row.
constexpr std::array exporter_facts =
    std::apply([](const auto&... rows) { return std::array{rows.facts...}; }, exporter_table);

// How many the registry offers: the first rows.
constexpr size_t count_offered_exporters()
{
    size_t count = 0;
    for (const Exporter_facts& facts : exporter_facts) {
        if (!facts.offered)
            break;
        ++count;
    }
    return count;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
