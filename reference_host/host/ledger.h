// Keeps account of every object that the host lends or gives to the plug-in.
//
// Life of an object:
//   1. make() creates it. The ledger owns it until the ledger's end, whatever the plug-in does: an
//      object that was released stays in memory, so that a late call on it is seen and harmless.
//   2. hand_out() gives the plug-in one reference, which release() must bring back; lend() lets the
//      plug-in use the object without a reference.
//   3. findings() lists unbalanced references and other misuse.
//
// The plug-in works on one thread, and so does the ledger.
#ifndef REFERENCE_HOST_HOST_LEDGER_H
#define REFERENCE_HOST_HOST_LEDGER_H

#include "plugin/interface.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace reference_host
{

// The account of one object. `kind` says what it is ("compiler options"), `name` which one; the
// name may be empty.
class Ledger_entry
{
public:
    Ledger_entry(std::string kind, std::string name)
        : m_kind(std::move(kind)), m_name(std::move(name))
    {
    }
    virtual ~Ledger_entry() = default;
    Ledger_entry(const Ledger_entry&) = delete;
    Ledger_entry& operator=(const Ledger_entry&) = delete;

    const std::string& kind() const { return m_kind; }
    std::string description() const;

    void hand_out() const { ++m_references; }
    void lend() const { m_is_lent = true; }
    void take_back() const;

    // To be called first in every operation of the object.
    void used(const char* operation) const;

    int references() const { return m_references; }
    const std::vector<std::string>& misuses() const { return m_misuses; }

private:
    void note(const std::string& misuse) const;

    std::string m_kind;
    std::string m_name;
    // The host's interfaces count references in const operations.
    mutable int m_references = 0;
    mutable bool m_is_lent = false;
    mutable std::vector<std::string> m_misuses; // each once
};

// A host object: an interface of the SDK with its account. The interface comes first, so that its
// address is the object's as the plug-in sees it.
template<typename Sdk_interface>
class Host_object : public Sdk_interface, public Ledger_entry
{
public:
    using Ledger_entry::Ledger_entry;

    void reference() const override
    {
        used("reference");
        hand_out();
    }
    void release() const override { take_back(); }

    QZ::TSDK::Interface* get_interface(int) override
    {
        used("get_interface");
        return nullptr;
    }
    // Most interfaces of the host have no id by which they could be asked for.
    int get_interface_target() const override
    {
        used("get_interface_target");
        return 0;
    }
};

// A reference that the plug-in is known not to release under some condition.
struct Kept_reference {
    const char* kind; // of the object
    bool holds;       // whether the condition was met
};

class Ledger
{
public:
    template<typename Object, typename... Arguments>
    Object& make(Arguments&&... arguments)
    {
        auto object = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
        Object& result = *object;
        m_by_address[static_cast<QZ::TSDK::Interface*>(&result)] = &result;
        m_entries.push_back(std::move(object));
        return result;
    }

    // The host's own object behind a pointer that the plug-in hands in, or null when the pointer is
    // null or none of the host's objects of that class.
    template<typename Object>
    Object* find(QZ::TSDK::Interface* pointer) const
    {
        const auto found = m_by_address.find(pointer);
        return found == m_by_address.end() ? nullptr : dynamic_cast<Object*>(found->second);
    }

    // One line for each reference that was not released and each misuse, except for one reference
    // for each kept one that holds.
    std::vector<std::string> findings(const std::vector<Kept_reference>& kept) const;

private:
    std::vector<std::unique_ptr<Ledger_entry>> m_entries;
    std::unordered_map<QZ::TSDK::Interface*, Ledger_entry*> m_by_address;
};

} // namespace reference_host

#endif
