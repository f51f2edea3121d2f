// Compiles the selected shader together with the scene's lights, environment and volume.
#ifndef EXPORT_COMMON_COMPILE_GROUP_H
#define EXPORT_COMMON_COMPILE_GROUP_H

#include "export_common/host_ref.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"
#include "sdk/itovira.h"
#include "sdk/itovira_compiler.h"

#include <wx/string.h>

class wxWindow;

namespace QZ
{
namespace TOVIRAEXPORT
{

// view                    the graph, and the render settings: lights, environment, volume
// app                     gives the compiler
// errors                  the sink for diagnostics; passed on, may be null
// shader_node             the shader to compile; with what is connected to it, it decides whether
//                         lights and an environment are needed
// resolve_unsized_arrays  option "resolve_unsized_arrays"
// preserve_light_loop     option "preserve_light_loop"; lights are then neither needed nor listed
// world_space             option "internal_space" = "world"
// ignore_literal          option "ignore_literal"
// parent                  of the question below, may be null
// interactive             what happens when needed lights or a needed environment are missing: true
//                         asks the user, false fails with the reason in `message`
// message                 untouched otherwise
//
// A flag that is false sets nothing: the compiler's default stands.
//
// Returns the unit as a new reference, which the caller releases. Null when the user declined, when
// something was missing and nobody was asked, or when the compiler failed (its reasons are in
// `errors`).
TSDK::ICompilation_unit* compile_group(TSDK::IGraph_view* view, TSDK::ITovira* app,
                                       TSDK::ICompiler_errors* errors,
                                       TSDK::IGraph_node* shader_node, bool resolve_unsized_arrays,
                                       bool preserve_light_loop, bool world_space,
                                       bool ignore_literal, wxWindow* parent, bool interactive,
                                       wxString& message);

// The four switches of a compilation, named.
enum Group_flag {
    RESOLVE_UNSIZED_ARRAYS = 1,
    PRESERVE_LIGHT_LOOP = 2,
    WORLD_SPACE = 4,
    IGNORE_LITERAL = 8
};

// The same with the Group_flags that are on, joined by |.
Host_ref<TSDK::ICompilation_unit> compile_group(TSDK::IGraph_view* view, TSDK::ITovira* app,
                                                TSDK::ICompiler_errors* errors,
                                                TSDK::IGraph_node* shader_node, int flags,
                                                wxWindow* parent, bool interactive,
                                                wxString& message);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
