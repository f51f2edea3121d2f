// What the window remembers of each document from one run to the next: node, exporter, options,
// file names, lights. Per user, in the usual place of wxConfig.
#ifndef REFERENCE_HOST_WINDOW_DOCUMENT_MEMORY_H
#define REFERENCE_HOST_WINDOW_DOCUMENT_MEMORY_H

#include "reference_host/window/work_document.h"

class wxConfigBase;

namespace reference_host
{

class Document_memory
{
public:
    // The store must outlive the memory.
    explicit Document_memory(wxConfigBase& store) : m_store(store) {}

    // Sets what is remembered of the document of that file; the rest stays as it is.
    void load(Work_document& document) const;

    // Remembers all that the user has chosen for the document.
    void store(const Work_document& document);

private:
    wxConfigBase& m_store;
};

} // namespace reference_host

#endif
