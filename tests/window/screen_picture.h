// Pictures of what is on the screen.
#ifndef TESTS_WINDOW_SCREEN_PICTURE_H
#define TESTS_WINDOW_SCREEN_PICTURE_H

#include <wx/image.h>

namespace QZ
{
namespace TEST
{

// What the X server shows there now. wx's own way shows a screen as it was at the first time.
wxImage picture_of_screen(const wxRect& place);

} // namespace TEST
} // namespace QZ

#endif
