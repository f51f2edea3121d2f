// The picture of the preview. Dragging and the arrow keys move the camera around the object, the
// wheel and the keys + and - bring it nearer and take it away, 0 puts it back.
#ifndef REFERENCE_HOST_WINDOW_PREVIEW_CANVAS_H
#define REFERENCE_HOST_WINDOW_PREVIEW_CANVAS_H

#include "reference_host/render/image.h"
#include "reference_host/render/view.h"

#include <functional>
#include <memory>
#include <string>

#include <wx/bitmap.h>
#include <wx/window.h>

namespace reference_host
{

class Preview_canvas : public wxWindow
{
public:
    // Calls back when the camera has moved, and when the canvas is painted.
    Preview_canvas(wxWindow* parent, std::function<void()> moved, std::function<void()> painted);

    // What the canvas shows: a picture, else a text.
    void show(std::shared_ptr<const Image> picture);
    void show_text(const std::string& text);

    const std::shared_ptr<const Image>& picture() const { return m_picture; }
    const std::string& text() const { return m_text; }

    const Camera& camera() const { return m_camera; }
    void reset_camera();

    // The side of the square that the picture fills, in pixels of the screen.
    int side() const;

private:
    void bind_mouse();
    void on_key(wxKeyEvent& event);
    void drag_to(const wxPoint& place);
    void orbit(double right, double up);
    void approach(double factor);
    void paint();

    std::function<void()> m_moved;
    std::function<void()> m_painted;
    std::shared_ptr<const Image> m_picture;
    wxBitmap m_bitmap;
    std::string m_text;
    Camera m_camera;
    wxPoint m_dragged_to;
    bool m_is_dragged = false;
};

} // namespace reference_host

#endif
