// The end of a search.
#ifndef REFERENCE_HOST_WINDOW_SEARCH_END_H
#define REFERENCE_HOST_WINDOW_SEARCH_END_H

class wxSearchCtrl;
class wxWindow;

namespace reference_host
{

// Escape empties the search and gives the keys to what was searched.
void end_with_escape(wxSearchCtrl& search, wxWindow& searched);

} // namespace reference_host

#endif
