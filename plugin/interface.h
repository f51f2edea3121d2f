// The root of every interface between the host and the plug-in.
//
// The two call each other only through virtual tables: the order of the operations below is a
// binary contract and never changes. Everything runs on the host's user-interface thread, and no
// operation throws.
#ifndef PLUGIN_INTERFACE_H
#define PLUGIN_INTERFACE_H

namespace QZ
{
namespace TSDK
{

class Interface
{
public:
    // slot 0: Adds a reference, which release() returns. The host's objects count theirs; here, and
    // so in every exporter, it does nothing.
    virtual void reference() const {}

    // slot 1: Returns a reference. An object of the host may be gone afterwards, so nothing may be
    // called on it unless another reference is held. Does nothing here: an exporter stays.
    virtual void release() const {}

    // slot 2: Another interface of the same object, or null when it has none of that id. The ids
    // are listed in sdk/interface_ids.h; each fixes the type to cast to. An object of the host
    // returns a new reference; an exporter returns itself for its own id. May be called as long as
    // the object lives.
    virtual Interface* get_interface(int id) = 0;

    // slot 3: The id of the interface that this object implements. May be called as long as the
    // object lives.
    virtual int get_interface_target() const = 0;

protected:
    // Not virtual: objects are released through slot 1, never deleted through this class.
    ~Interface() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
