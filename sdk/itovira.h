// The application handle that an export is given, and the application's preferences.
//
// Rules of all host interfaces in this folder:
//   1. The order of the operations is a binary contract. The named gaps (`unused_N`) are operations
//      of the host that the plug-in never calls; they hold the places of the others.
//   2. "New reference": the caller gives it back with release(). Anything else is borrowed: it is
//      used only until the next call on the same object and never freed.
//   3. Texts are NUL-terminated bytes in the host's 8-bit encoding, not necessarily UTF-8. A null
//      text from the host counts as empty.
//   4. Everything is called on the user-interface thread, and no exception crosses the border.
#ifndef SDK_ITOVIRA_H
#define SDK_ITOVIRA_H

#include "plugin/interface.h"

namespace QZ
{
namespace TSDK
{

// get_interface (slot 2) gives, each as a new reference: INTERFACE_COMPILER the ITovira_compiler,
// INTERFACE_PREFERENCES the IPreferences (may be null).
class ITovira : public Interface
{
public:
    virtual void unused_4() {}
    virtual void unused_5() {}
    virtual void unused_6() {}
    virtual void unused_7() {}

    // slot 8: The folders in which user files are searched, in order. Sets `count` to their number;
    // entries may be null. Borrowed.
    virtual const char** get_search_paths(int& count) = 0;

protected:
    ~ITovira() = default;
};

class IPreferences : public Interface
{
public:
    virtual void unused_4() {}
    virtual void unused_5() {}
    virtual void unused_6() {}
    virtual void unused_7() {}

    // slot 8: Reads the named preference into `value` and returns true; returns false and leaves
    // `value` unchanged when there is no such preference.
    virtual bool get_bool_preference(const char* name, bool* value) = 0;

protected:
    ~IPreferences() = default;
};

} // namespace TSDK
} // namespace QZ

#endif
