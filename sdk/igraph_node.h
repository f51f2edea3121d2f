// The nodes of the shader graph and the iterators that walk it.
//
// The rules of sdk/itovira.h hold: slot order, references, texts.
#ifndef SDK_IGRAPH_NODE_H
#define SDK_IGRAPH_NODE_H

#include "plugin/interface.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

// Walks the connections of one input.
class IConnection_iterator : public Interface
{
public:
    virtual void reset() = 0;         // slot 4: back to the first connection
    virtual void next(int steps) = 0; // slot 5: forward by `steps`; 1 is used
    virtual void unused_6() {}
    virtual bool at_end() = 0; // slot 7: past the last connection
    virtual void unused_8() {}
    virtual void unused_9() {}

    // slot 10: The node that the connection comes from. New reference, or null when the connection
    // has no source.
    virtual IGraph_node* get_source_node() = 0;

protected:
    ~IConnection_iterator() = default;
};

// Walks the inputs of one node.
class IInput_iterator : public Interface
{
public:
    virtual void reset() = 0;         // slot 4: back to the first input
    virtual void next(int steps) = 0; // slot 5: forward by `steps`; 1 is used
    virtual void unused_6() {}
    virtual bool at_end() = 0; // slot 7: past the last input
    virtual void unused_8() {}
    virtual void unused_9() {}
    virtual void unused_10() {}
    virtual void unused_11() {}
    virtual void unused_12() {}
    virtual void unused_13() {}

    // slot 14: The connections of the current input. New reference.
    virtual IConnection_iterator* get_connections() = 0;

protected:
    ~IInput_iterator() = default;
};

// The group view of a declaration that is made of member nodes.
class IShader_group : public Interface
{
public:
    virtual int get_num_members() = 0; // slot 4

    // slot 5: The member at `index`, counted from 0. Borrowed: it lives as long as its group.
    virtual IGraph_node* get_member(int index) = 0;

    virtual void unused_6() {}
    virtual void unused_7() {}
    virtual void unused_8() {}
    virtual void unused_9() {}
    virtual void unused_10() {}

    virtual bool is_material() = 0; // slot 11

protected:
    ~IShader_group() = default;
};

// The declaration behind a node. get_interface(INTERFACE_SHADER_GROUP) gives its IShader_group as a
// new reference, or null when the declaration is not a group.
class IShader_declaration : public Interface
{
public:
    virtual void unused_4() {}
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
    virtual void unused_15() {}
    virtual void unused_16() {}
    virtual void unused_17() {}
    virtual void unused_18() {}

    virtual bool has_parameter(const char* name) = 0; // slot 19
    virtual bool uses_function(const char* name) = 0; // slot 20

protected:
    ~IShader_declaration() = default;
};

// One node, an instance of a shader.
class IGraph_node : public Interface
{
public:
    // slot 4: The node's name, or null. Borrowed.
    virtual const char* get_name() = 0;

    virtual void unused_5() {}

    // slot 6: The node's declaration. New reference.
    virtual IShader_declaration* get_declaration() = 0;

    virtual void unused_7() {}
    virtual void unused_8() {}
    virtual void unused_9() {}
    virtual void unused_10() {}
    virtual void unused_11() {}

    // slot 12: An iterator over the inputs of a kind; 0 is used. New reference.
    virtual IInput_iterator* get_input_iterator(int kind) = 0;

    virtual void unused_13() {}
    virtual void unused_14() {}
    virtual void unused_15() {}
    virtual void unused_16() {}
    virtual void unused_17() {}
    virtual void unused_18() {}
    virtual void unused_19() {}

    // slot 20: The node's kind: "surface", "environment", "lens", "light", "volume" and others.
    // Null is taken as "surface". Borrowed.
    virtual const char* get_shader_type() = 0;

protected:
    ~IGraph_node() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
