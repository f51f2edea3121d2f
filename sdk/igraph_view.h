// The view on the shader graph that an export starts from: selection and render settings.
//
// The rules of sdk/itovira.h hold: slot order, references, texts.
#ifndef SDK_IGRAPH_VIEW_H
#define SDK_IGRAPH_VIEW_H

#include "plugin/interface.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

class IGraph_view : public Interface
{
public:
    // slot 4: The graph that a compilation is given. New reference.
    virtual Interface* get_graph() = 0;

    virtual void unused_5() {}
    virtual void unused_6() {}
    virtual void unused_7() {}
    virtual void unused_8() {}
    virtual void unused_9() {}
    virtual void unused_10() {}
    virtual void unused_11() {}
    virtual void unused_12() {}
    virtual void unused_13() {}

    // slots 14 and 15: The environment and the volume shader that the render settings assign. New
    // reference, or null when there is none.
    virtual IGraph_node* get_environment_shader() = 0;
    virtual IGraph_node* get_volume_shader() = 0;

    // slots 16 to 20: The lights that the render settings assign: their number, and each light's
    // node (new reference), kind, spread and distance limit. The host gives the numbers their
    // meaning.
    virtual unsigned int get_num_lights() = 0;
    virtual IGraph_node* get_light(unsigned int index) = 0;
    virtual int get_light_type(unsigned int index) = 0;
    virtual float get_light_spread(unsigned int index) = 0;
    virtual float get_light_distance_limit(unsigned int index) = 0;

    virtual void unused_21() {}
    virtual void unused_22() {}
    virtual void unused_23() {}

    // slot 24: How many nodes are selected.
    virtual int get_num_selected_nodes() = 0;

    // slot 25: A selected node, counted from 0. New reference.
    virtual IGraph_node* get_selected_node(int index) = 0;

    // slot 26: Fills in the scene's ambient colour: red, green, blue, alpha.
    virtual void get_scene_ambient(float rgba[4]) = 0;

protected:
    ~IGraph_view() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
