// The generic plug-in base class, as the host declares it.
//
// Life of a plug-in object:
//   1. The host loads the library and gets the object from an entry function
//      (plugin/init_library.h).
//   2. It asks what the object is (slots 0 to 6), at any time and as often as it likes.
//   3. It releases the object or deletes it. Nothing may be called afterwards, unless the object
//      says that its release does nothing.
//
// The host knows the object only through its virtual table: the order of the operations below is a
// binary contract and never changes. Everything runs on the host's user-interface thread.
#ifndef PLUGIN_PLUGIN_H
#define PLUGIN_PLUGIN_H

namespace qz
{
namespace base
{

class Plugin
{
public:
    // slot 0: The version of the plug-in system that this class belongs to.
    virtual int get_plugin_system_version() { return 2; }

    // slot 1: The plug-in's name. Static text, never null.
    virtual const char* get_name() const = 0;

    // slot 2: The kind of plug-in, which fixes the type to cast the object to. Static text, never
    // null.
    virtual const char* get_type() const = 0;

    // slot 3: The plug-in's own version, counted from 1.
    virtual int get_version() const { return 1; }

    // slot 4: The compiler that built the plug-in, for information only. Static text, never null;
    // may be empty.
    virtual const char* get_compiler() const { return "unknown"; }

    // slot 5: Releases the object. The default deletes it; a plug-in that outlives its release
    // overrides this.
    virtual void release() { delete this; }

    // slot 6: Reads the property `index`, counted from 0, into `value`. Returns 0, with `value`
    // untouched, when there is no such property; the default has none. `value` may then be null.
    virtual int get_string_property(int /*index*/, const char** /*value*/) { return 0; }

    // slots 7 and 8: Complete and deleting destructor.
    virtual ~Plugin() = default;
};

} // namespace base
} // namespace qz

#endif
