// The view on the shader graph that an export starts from: the selection and the render settings.
//
// Lent to export_shader; everything taken from it is released before that returns. The user may not
// change the graph meanwhile, but a modal question may let the host change its lights: their number
// is therefore asked anew, and a light that is gone by then is null.
//
// The rules of sdk/itovira.h hold: slot order, references, null, texts, threads.
#ifndef SDK_IGRAPH_VIEW_H
#define SDK_IGRAPH_VIEW_H

#include "plugin/interface.h"
#include "sdk/unused_slots.h"

namespace QZ
{
namespace TSDK
{

class IGraph_node;

class IGraph_view : public Interface
{
public:
    // slot 4: The graph, to be handed to ITovira_compiler::compile. New reference.
    virtual Interface* get_graph() = 0;

    UNUSED_SLOTS_9(5_to_13)

    // slots 14 and 15: The environment shader and the volume shader that the render settings
    // assign. New reference, or null when none is assigned.
    virtual IGraph_node* get_environment_shader() = 0;
    virtual IGraph_node* get_volume_shader() = 0;

    // slot 16: The number of lights that the render settings assign.
    virtual unsigned int get_num_lights() = 0;

    // slot 17: The light at `index`, counted from 0 and below slot 16. New reference, or null when
    // the light is gone.
    virtual IGraph_node* get_light(unsigned int index) = 0;

    // slots 18 to 20: Kind, spread and distance limit of the light at `index`, as above. They are
    // handed on to the compiler as numbers; host and compiler agree on their meaning and units.
    virtual int get_light_type(unsigned int index) = 0;
    virtual float get_light_spread(unsigned int index) = 0;
    virtual float get_light_distance_limit(unsigned int index) = 0;

    UNUSED_SLOTS_3(21_to_23)

    // slot 24: How many nodes are selected. An exporter acts on exactly one.
    virtual int get_num_selected_nodes() = 0;

    // slot 25: The selected node at `index`, counted from 0 and below slot 24. New reference.
    virtual IGraph_node* get_selected_node(int index) = 0;

    // slot 26: Sets the four floats of `rgba`, which is not null, to the scene's ambient colour:
    // red, green, blue, alpha, linear, 1 being white and opaque.
    virtual void get_scene_ambient(float rgba[4]) = 0;

protected:
    ~IGraph_view() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
