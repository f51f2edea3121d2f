// The shader compiler: option sets, compilation units and generated code.
//
// Life of a compilation:
//   1. ITovira gives the ITovira_compiler; get_errors gives the sink for its messages.
//   2. create_options gives an option set; the exporter fills it with what is to be compiled.
//   3. compile (a shader with its scene) or compile_shader (one node by itself) gives a unit.
//   4. A second option set says how the code is to look; generate_shader gives the generated
//      code, as often as there are files to write.
//   5. get_code_size and get_code copy the texts out. Then everything is released.
//
// The rules of sdk/itovira.h hold: slot order, references, null, texts, threads.
#ifndef SDK_ITOVIRA_COMPILER_H
#define SDK_ITOVIRA_COMPILER_H

#include "plugin/interface.h"
#include "sdk/unused_slots.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

// A set of options, each a name and a value. An option that was never set has the compiler's
// default.
class ICompiler_options : public Interface
{
public:
    // slot 4: Sets the option `name` to `value`, whether or not it was set before. Both texts are
    // copied. Switches are "true" and "false", numbers have a decimal point in every locale. A name
    // that the compiler does not know has no effect.
    virtual void set_option(const char* name, const char* value) = 0;

protected:
    ~ICompiler_options() = default;
};

// The sink for the compiler's messages. The plug-in hands it from get_errors to a compilation and
// calls nothing on it but release; the host shows what it collects.
class ICompiler_errors : public Interface
{
protected:
    ~ICompiler_errors() = default;
};

// Generated code: texts numbered from 0. "FX" makes one text; "GL" 0 the vertex and 1 the fragment
// shader; "Swrc" 0 the C++ source and 1 the qz scene text.
class IGenerated_shader : public Interface
{
public:
    UNUSED_SLOT(4)

    // slot 5: The number of texts, at least 0. May be asked at any time.
    virtual int get_num_codes() = 0;

    UNUSED_SLOT(6)

    // slot 7: The length in bytes of the text `code_index`, without a terminating NUL. What a host
    // returns for an index that it has no text for is its own affair; 0 is expected.
    virtual unsigned int get_code_size(int code_index) = 0;

    // slot 8: Copies the text `code_index` into `buffer` and ends it with a NUL. The buffer is the
    // caller's and holds size + 1 bytes; `size` is what slot 7 has returned for the same index. A
    // host that has no such text leaves the buffer as it is: the caller has put an empty text
    // there.
    virtual void get_code(int code_index, char* buffer, unsigned int size) = 0;

protected:
    ~IGenerated_shader() = default;
};

// The result of a compilation. It lives on its own: the compiler and the option set may go first.
class ICompilation_unit : public Interface
{
public:
    // slot 4: Generates code for `target`: "FX" (effect files), "GL" (GLSL) or "Swrc" (renderer
    // source), as `options` say, which are read during the call and not kept. New reference, or
    // null when the code cannot be generated; the reasons go to the errors of the compilation. May
    // be called any number of times.
    virtual IGenerated_shader* generate_shader(const char* target, ICompiler_options* options) = 0;

    UNUSED_SLOTS_10(5_to_14)

    // slot 15: Whether the compiled shader reads the field `name` of the shading state, for
    // instance "texture_tangent". `shader_index` 0 is the shader that was compiled. False for a
    // name that is not a field. May be asked before and after code is generated.
    virtual bool uses_state(int shader_index, const char* name) = 0;

protected:
    ~ICompilation_unit() = default;
};

// The compiler. get_interface of ITovira gives it.
class ITovira_compiler : public Interface
{
public:
    // slot 4: An empty option set. New reference.
    virtual ICompiler_options* create_options() = 0;

    // slot 5: A sink for messages, for the compilations of one export. New reference.
    virtual ICompiler_errors* get_errors() = 0;

    UNUSED_SLOTS_2(6_to_7)

    // slot 8: Compiles `node` by itself, without lights, environment and volume. The messages go to
    // `errors`; null drops them. `flags` is 0. New reference, or null when it does not compile.
    virtual ICompilation_unit* compile_shader(IGraph_node* node, ICompiler_errors* errors,
                                              int flags) = 0;

    UNUSED_SLOT(9)

    // slot 10: Compiles the shader that the option "shader_name" names within `graph` (of
    // IGraph_view::get_graph), with the lights, environment and volume that further options name.
    // The messages go to `errors`; null drops them. `options` are read during the call and not
    // kept. New reference, or null when it does not compile.
    virtual ICompilation_unit* compile(Interface* graph, ICompiler_errors* errors,
                                       ICompiler_options* options) = 0;

protected:
    ~ITovira_compiler() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
