// The application handle that an export is given, and the application's preferences.
//
// Life of the host's objects, as the plug-in meets them:
//   1. The host calls an exporter's export_shader with its ITovira and its IGraph_view, both lent
//      for the time of the call. No other host object reaches the plug-in.
//   2. Everything else comes from these two: the compiler and the preferences from ITovira, nodes
//      and the graph from the view, option sets, units and texts from the compiler.
//   3. Everything taken is released before export_shader returns. The plug-in keeps nothing.
//
// Rules of all interfaces in this folder:
//   1. The order of the operations is a binary contract and never changes (sdk/unused_slots.h
//      explains how gaps are written).
//   2. "New reference": the result is the caller's, who returns it with release(). "Borrowed": the
//      result belongs to the object that was asked and is valid until the next call on it; it is
//      never released or freed.
//   3. A null result means what the operation says; an operation that says nothing of null returns
//      none. The plug-in survives one all the same: it goes on as if there were nothing.
//   4. Texts are NUL-terminated bytes in the host's 8-bit encoding, not necessarily UTF-8. A null
//      text from the host counts as empty unless the operation says otherwise. Texts handed to the
//      host are never null, and are lent for the call.
//   5. Every operation is called on the user-interface thread, during an export only, and throws
//      nothing.
#ifndef SDK_ITOVIRA_H
#define SDK_ITOVIRA_H

#include "plugin/interface.h"
#include "sdk/unused_slots.h"

namespace QZ
{
namespace TSDK
{

// The application. Lent to export_shader.
//
// get_interface (slot 2) returns, as a new reference each: for INTERFACE_COMPILER the
// ITovira_compiler; for INTERFACE_PREFERENCES the IPreferences, or null when the application has
// none.
class ITovira : public Interface
{
public:
    UNUSED_SLOTS_4(4_to_7)

    // slot 8: The folders in which user files are searched, first to last. Sets `count` to their
    // number and returns a list of that length, borrowed; null for an empty list. An entry may be
    // null and is passed over; an empty one is the current folder. A separator at the end of an
    // entry may be there or not.
    virtual const char** get_search_paths(int& count) = 0;

protected:
    ~ITovira() = default;
};

// The preferences of the application, by name.
class IPreferences : public Interface
{
public:
    UNUSED_SLOTS_4(4_to_7)

    // slot 8: Reads the preference `name` into `value`, which is not null. Returns true when there
    // is one of that name and it is a switch; otherwise returns false and leaves `value` unchanged.
    virtual bool get_bool_preference(const char* name, bool* value) = 0;

protected:
    ~IPreferences() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
