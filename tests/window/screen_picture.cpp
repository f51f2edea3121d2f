#include "tests/window/screen_picture.h"

#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace QZ
{
namespace TEST
{

wxImage picture_of_screen(const wxRect& place)
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        throw std::runtime_error("the display cannot be opened");
    const auto width = static_cast<unsigned>(place.width);
    const auto height = static_cast<unsigned>(place.height);
    XImage* shown = XGetImage(display, DefaultRootWindow(display), place.x, place.y, width, height,
                              AllPlanes, ZPixmap);
    wxImage picture(place.width, place.height);
    for (int y = 0; shown && y < place.height; ++y) {
        for (int x = 0; x < place.width; ++x) {
            const unsigned long pixel = XGetPixel(shown, x, y);
            picture.SetRGB(x, y, static_cast<unsigned char>(pixel >> 16u),
                           static_cast<unsigned char>(pixel >> 8u),
                           static_cast<unsigned char>(pixel));
        }
    }
    if (shown)
        XDestroyImage(shown);
    XCloseDisplay(display);
    return picture;
}

} // namespace TEST
} // namespace QZ
