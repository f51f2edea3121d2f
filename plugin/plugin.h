// The generic plug-in base class, as the host declares it.
//
// The host knows a plug-in object only through its virtual table: the order of the operations
// below is a binary contract and never changes.
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

    // slot 2: What kind of plug-in this is. Static text, never null.
    virtual const char* get_type() const = 0;

    // slot 3: The plug-in's own version.
    virtual int get_version() const { return 1; }

    // slot 4: The compiler that built the plug-in, for information only.
    virtual const char* get_compiler() const { return "unknown"; }

    // slot 5: Gives the object up; the default deletes it.
    virtual void release() { delete this; }

    // slot 6: Reads the property of the given index into `value`. Returns 0 when there is no such
    // property, and then leaves `value` untouched.
    virtual int get_string_property(int /*index*/, const char** /*value*/) { return 0; }

    // slots 7 and 8
    virtual ~Plugin() = default;
};

} // namespace base
} // namespace qz

#endif
