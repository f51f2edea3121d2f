// The rights of an ordinary user, for tests of what may not be read or written: root may do all.
#ifndef TESTS_SUPPORT_WITHOUT_ROOT_H
#define TESTS_SUPPORT_WITHOUT_ROOT_H

#include <unistd.h>

namespace QZ
{
namespace TEST
{

// Steps down while it lives, if the program runs as root.
class Without_root
{
public:
    Without_root() : m_stepped_down(::geteuid() == 0 && ::seteuid(nobody) == 0) {}
    ~Without_root()
    {
        if (m_stepped_down && ::seteuid(0) != 0)
            ::_exit(1);
    }
    Without_root(const Without_root&) = delete;
    Without_root& operator=(const Without_root&) = delete;

private:
    static constexpr uid_t nobody = 65534;

    bool m_stepped_down;
};

} // namespace TEST
} // namespace QZ

#endif
