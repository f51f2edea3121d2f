// How the parts of the reader give up an element, and how they go on with the others.
#ifndef REFERENCE_HOST_DOCUMENT_DOCUMENT_ERROR_H
#define REFERENCE_HOST_DOCUMENT_DOCUMENT_ERROR_H

#include "reference_host/document/materialx_reader.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace reference_host
{

// What is wrong with one element. Caught by Document_problems alone.
class Document_error : public std::runtime_error
{
public:
    // What follows from the error: the element is left out, or the reading ends.
    enum class Reach { element, document };

    Document_error(Place place, const std::string& text, Reach reach = Reach::element)
        : std::runtime_error(text), m_place(std::move(place)), m_reach(reach)
    {
    }

    const Place& place() const { return m_place; }
    Reach reach() const { return m_reach; }

private:
    Place m_place;
    Reach m_reach;
};

// An element is given up because of an earlier error, which was reported.
struct Told_already {
};

// Reading makes no sense any more. Caught by read_materialx alone.
struct Reading_ended {
};

// All that is wrong with a document, each once.
class Document_problems
{
public:
    // Runs a part of the reading and notes what it gives up with. Throws Reading_ended.
    template<typename Part>
    void attempt(Part part)
    {
        try {
            part();
        } catch (const Document_error& error) {
            add(error);
        } catch (const Told_already&) {
        }
    }

    // Throws Reading_ended when the error reaches so far, and when there are too many.
    void add(const Document_error& error);

    // Throws Reading_ended when there are any.
    void end_if_any() const;

    const std::vector<Document_problem>& all() const { return m_problems; }

private:
    std::vector<Document_problem> m_problems;
};

} // namespace reference_host

#endif
