// The shader compiler: option sets, compilation units and generated code.
//
// The rules of sdk/itovira.h hold: slot order, references, texts.
#ifndef SDK_ITOVIRA_COMPILER_H
#define SDK_ITOVIRA_COMPILER_H

#include "plugin/interface.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

// A set of options, each a name and a value. Options that were never set have the compiler's
// defaults.
class ICompiler_options : public Interface
{
public:
    // slot 4: Sets or replaces one option. Both texts are copied.
    virtual void set_option(const char* name, const char* value) = 0;

protected:
    ~ICompiler_options() = default;
};

// The sink for the compiler's diagnostics. The plug-in only hands it on.
class ICompiler_errors : public Interface
{
protected:
    ~ICompiler_errors() = default;
};

// Generated code: a list of texts, numbered from 0. GLSL: 0 vertex, 1 fragment. "Swrc": 0 C++
// source, 1 qz scene text. Effects: 0.
class IGenerated_shader : public Interface
{
public:
    virtual void unused_4() {}

    // slot 5: The number of texts.
    virtual int get_num_codes() = 0;

    virtual void unused_6() {}

    // slot 7: The length of a text in bytes, without a terminating NUL.
    virtual unsigned int get_code_size(int code_index) = 0;

    // slot 8: Copies a text, NUL-terminated, into `buffer`, which holds size + 1 bytes.
    virtual void get_code(int code_index, char* buffer, unsigned int size) = 0;

protected:
    ~IGenerated_shader() = default;
};

// The result of a compilation.
class ICompilation_unit : public Interface
{
public:
    // slot 4: Generates code for a target: "FX" (effect files), "GL" (GLSL) or "Swrc" (renderer
    // source), steered by a set of options. New reference, or null on failure.
    virtual IGenerated_shader* generate_shader(const char* target, ICompiler_options* options) = 0;

    virtual void unused_5() {}
    virtual void unused_6() {}
    virtual void unused_7() {}
    virtual void unused_8() {}
    virtual void unused_9() {}
    virtual void unused_10() {}
    virtual void unused_11() {}
    virtual void unused_12() {}
    virtual void unused_13() {}
    virtual void unused_14() {}

    // slot 15: Whether the compiled shader uses the named field of the shading state.
    virtual bool uses_state(int shader_index, const char* name) = 0;

protected:
    ~ICompilation_unit() = default;
};

class ITovira_compiler : public Interface
{
public:
    // slot 4: A new, empty set of options. New reference.
    virtual ICompiler_options* create_options() = 0;

    // slot 5: A sink for diagnostics, to be handed to a compilation. New reference.
    virtual ICompiler_errors* get_errors() = 0;

    virtual void unused_6() {}
    virtual void unused_7() {}

    // slot 8: Compiles one node by itself. `errors` may be null, `flags` is 0. New reference, or
    // null on failure.
    virtual ICompilation_unit* compile_shader(IGraph_node* node, ICompiler_errors* errors,
                                              int flags) = 0;

    virtual void unused_9() {}

    // slot 10: Compiles the shader that the option "shader_name" names within `graph`. New
    // reference, or null on failure.
    virtual ICompilation_unit* compile(Interface* graph, ICompiler_errors* errors,
                                       ICompiler_options* options) = 0;

protected:
    ~ITovira_compiler() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
