// The nodes of the shader graph and the iterators that walk it.
//
// How a graph is walked from a node:
//   1. get_input_iterator(0), reset(), then until at_end(): get_connections(), next(1).
//   2. For each of these: reset(), then until at_end(): get_source_node(), next(1).
//   3. The sources are walked in the same way; a node may be reached more than once.
// An iterator is valid as long as its reference is held. At the end, only at_end, reset and release
// may be called.
//
// The rules of sdk/itovira.h hold: slot order, references, null, texts, threads.
#ifndef SDK_IGRAPH_NODE_H
#define SDK_IGRAPH_NODE_H

#include "plugin/interface.h"
#include "sdk/unused_slots.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

// Walks the connections of one input.
class IConnection_iterator : public Interface
{
public:
    // slot 4: Goes to the first connection. Called once before anything else.
    virtual void reset() = 0;

    // slot 5: Goes on by `steps` connections; 1 is used.
    virtual void next(int steps) = 0;

    UNUSED_SLOT(6)

    // slot 7: Whether the last connection has been passed; true at once for none.
    virtual bool at_end() = 0;

    UNUSED_SLOTS_2(8_to_9)

    // slot 10: The node that the current connection comes from. New reference, or null when the
    // connection has no source.
    virtual IGraph_node* get_source_node() = 0;

protected:
    ~IConnection_iterator() = default;
};

// Walks the inputs of one node.
class IInput_iterator : public Interface
{
public:
    // slot 4: Goes to the first input. Called once before anything else.
    virtual void reset() = 0;

    // slot 5: Goes on by `steps` inputs; 1 is used.
    virtual void next(int steps) = 0;

    UNUSED_SLOT(6)

    // slot 7: Whether the last input has been passed; true at once for none.
    virtual bool at_end() = 0;

    UNUSED_SLOTS_6(8_to_13)

    // slot 14: The connections of the current input, also when there are none. New reference.
    virtual IConnection_iterator* get_connections() = 0;

protected:
    ~IInput_iterator() = default;
};

// The group view of a declaration that is made of member nodes.
class IShader_group : public Interface
{
public:
    // slot 4: The number of members, at least 0.
    virtual int get_num_members() = 0;

    // slot 5: The member at `index`, counted from 0 and below slot 4, or null when it is missing.
    // Borrowed, and for longer than rule 2 says: it lives as long as its declaration.
    virtual IGraph_node* get_member(int index) = 0;

    UNUSED_SLOTS_5(6_to_10)

    // slot 11: Whether the group is a material. A material's surface shader is its member named
    // "surface".
    virtual bool is_material() = 0;

protected:
    ~IShader_group() = default;
};

// The declaration behind a node: what all nodes of one shader have in common.
//
// get_interface(INTERFACE_SHADER_GROUP) returns its IShader_group as a new reference, or null when
// the declaration is not a group.
class IShader_declaration : public Interface
{
public:
    UNUSED_SLOTS_15(4_to_18)

    // slot 19: Whether the shader has a parameter `name`, exactly so written. "lights" is asked
    // for: a shader that has it loops over the scene's lights.
    virtual bool has_parameter(const char* name) = 0;

    // slot 20: Whether the shader's code calls the function `name` of the shading language, exactly
    // so written. Asked for: "direct_light"; "reflect_environment", "refract_environment",
    // "trace_environment", "trace_immediate" and "trace".
    virtual bool uses_function(const char* name) = 0;

protected:
    ~IShader_declaration() = default;
};

// One node, an instance of a shader.
class IGraph_node : public Interface
{
public:
    // slot 4: The node's name, unique in its graph. Borrowed. Null when it has none.
    virtual const char* get_name() = 0;

    UNUSED_SLOT(5)

    // slot 6: The node's declaration. New reference.
    virtual IShader_declaration* get_declaration() = 0;

    UNUSED_SLOTS_5(7_to_11)

    // slot 12: An iterator over the inputs of a kind; 0, which is used, means all. New reference.
    virtual IInput_iterator* get_input_iterator(int kind) = 0;

    UNUSED_SLOTS_7(13_to_19)

    // slot 20: The kind of shader: "surface", "environment", "lens", "light", "volume" and others.
    // Borrowed. Null is taken as "surface".
    virtual const char* get_shader_type() = 0;

protected:
    ~IGraph_node() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
