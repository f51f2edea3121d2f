// The root of every host interface.
//
// The host and the plug-in call each other only through virtual tables: the order of the
// operations below is a binary contract and never changes.
#ifndef PLUGIN_INTERFACE_H
#define PLUGIN_INTERFACE_H

namespace QZ
{
namespace TSDK
{

class Interface
{
public:
    // slot 0: Adds a reference. Empty here: only the host's own objects count references.
    virtual void reference() const {}

    // slot 1: Gives one reference back. Empty here for the same reason.
    virtual void release() const {}

    // slot 2: Another interface of the same object, or null when it has none of that id. The ids
    // stand in sdk/interface_ids.h. A host object returns a new reference.
    virtual Interface* get_interface(int id) = 0;

    // slot 3: The id of the interface that this object implements.
    virtual int get_interface_target() const = 0;

protected:
    // Not virtual: objects are released through slot 1, never deleted through this class.
    ~Interface() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
