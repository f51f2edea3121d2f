// How the parts of the reader give up: with one message about one place. Caught by read_materialx
// alone.
#ifndef REFERENCE_HOST_DOCUMENT_DOCUMENT_ERROR_H
#define REFERENCE_HOST_DOCUMENT_DOCUMENT_ERROR_H

#include "reference_host/document/shader_graph.h"

#include <stdexcept>
#include <string>

namespace reference_host
{

class Document_error : public std::runtime_error
{
public:
    Document_error(Place place, const std::string& text)
        : std::runtime_error(text), m_place(std::move(place))
    {
    }

    const Place& place() const { return m_place; }

private:
    Place m_place;
};

} // namespace reference_host

#endif
