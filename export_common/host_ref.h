// A holder of one reference to a host object.
#ifndef EXPORT_COMMON_HOST_REF_H
#define EXPORT_COMMON_HOST_REF_H

#include <utility>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Adopts the reference that a host operation returned as new, and releases it at the end of its
// life. May be empty. Moves, and does not copy: there is one holder per reference.
template<typename T>
class Host_ref
{
public:
    Host_ref() = default;
    explicit Host_ref(T* object) : m_object(object) {}
    Host_ref(Host_ref&& other) noexcept : m_object(other.abandon()) {}
    Host_ref& operator=(Host_ref&& other) noexcept
    {
        Host_ref(std::move(other)).swap(*this);
        return *this;
    }
    ~Host_ref() { release(); }

    // Lends the object; null when empty.
    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    // Releases now.
    void release()
    {
        if (T* object = abandon())
            object->release();
    }

    // Returns the reference without releasing it: for results that go to a caller, and for releases
    // that are left out on purpose.
    T* abandon() { return std::exchange(m_object, nullptr); }

private:
    void swap(Host_ref& other) noexcept { std::swap(m_object, other.m_object); }

    T* m_object = nullptr;
};

// Takes the reference of a host operation's result: adopt(view->get_graph()).
template<typename T>
Host_ref<T> adopt(T* object)
{
    return Host_ref<T>(object);
}

// Another interface of a host object, whose type the id fixes (sdk/interface_ids.h).
template<typename T, typename Object>
Host_ref<T> query_interface(Object* object, int id)
{
    return Host_ref<T>(static_cast<T*>(object->get_interface(id)));
}

// Releases several holders in the order given, where the host sees the order.
template<typename... Refs>
void release_in_order(Refs&... refs)
{
    (refs.release(), ...);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
