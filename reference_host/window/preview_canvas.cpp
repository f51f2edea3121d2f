#include "reference_host/window/preview_canvas.h"

#include "reference_host/render/scene.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <cmath>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/settings.h>

namespace reference_host
{
namespace
{

constexpr double degrees_per_side = 180; // that a drag across the picture turns
constexpr double key_degrees = 10;
constexpr double steepest = 90; // degrees above or below the object
constexpr double distance_step = 1.1;
constexpr int margin = 12; // of a text, in pixels

wxBitmap bitmap_of(const Image& picture)
{
    wxImage image(picture.width, picture.height, false);
    unsigned char* to = image.GetData();
    for (const Pixel& pixel : picture.pixels)
        to = std::copy_n(pixel.begin(), 3, to);
    return wxBitmap(image);
}

} // namespace

Preview_canvas::Preview_canvas(wxWindow* parent, std::function<void()> moved,
                               std::function<void()> painted)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS),
      m_moved(std::move(moved)),
      m_painted(std::move(painted))
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetLabel(wxT("Preview"));
    SetMinSize(FromDIP(wxSize(120, 120)));
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        paint();
        m_painted();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        Refresh();
        m_moved();
    });
    Bind(wxEVT_CHAR_HOOK, &Preview_canvas::on_key, this);
    bind_mouse();
}

void Preview_canvas::show(std::shared_ptr<const Image> picture)
{
    m_picture = std::move(picture);
    m_bitmap = bitmap_of(*m_picture);
    m_text.clear();
    Refresh();
}

void Preview_canvas::show_text(const std::string& text)
{
    m_picture = nullptr;
    m_text = text;
    Refresh();
}

void Preview_canvas::reset_camera()
{
    m_camera = {};
    m_moved();
}

int Preview_canvas::side() const
{
    const wxSize size = GetClientSize();
    return static_cast<int>(std::min(size.x, size.y) * GetContentScaleFactor());
}

void Preview_canvas::orbit(double right, double up)
{
    m_camera.yaw = std::remainder(m_camera.yaw + right, 360.0);
    m_camera.pitch = std::clamp(m_camera.pitch + up, -steepest, steepest);
    m_moved();
}

void Preview_canvas::approach(double factor)
{
    m_camera.distance = std::clamp(m_camera.distance * factor, min_distance, max_distance);
    m_moved();
}

// The object follows the pointer: the camera goes the other way.
void Preview_canvas::drag_to(const wxPoint& place)
{
    const wxPoint way = place - m_dragged_to;
    m_dragged_to = place;
    const wxSize size = GetClientSize();
    const double turn = degrees_per_side / std::max(std::min(size.x, size.y), 1);
    if (way != wxPoint())
        orbit(-way.x * turn, way.y * turn);
}

void Preview_canvas::bind_mouse()
{
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        SetFocus();
        m_dragged_to = event.GetPosition();
        m_is_dragged = true;
    });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        m_is_dragged = m_is_dragged && event.LeftIsDown();
        if (m_is_dragged)
            drag_to(event.GetPosition());
    });
    // The toolkit may leave out the last way of a quick hand.
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (m_is_dragged)
            drag_to(event.GetPosition());
        m_is_dragged = false;
    });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { reset_camera(); });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        approach(event.GetWheelRotation() > 0 ? 1 / distance_step : distance_step);
    });
}

void Preview_canvas::on_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (event.HasAnyModifiers() && event.GetModifiers() != wxMOD_SHIFT)
        return event.Skip();
    if (key == '+' || key == '=' || key == WXK_NUMPAD_ADD)
        approach(1 / distance_step);
    else if (key == '-' || key == WXK_NUMPAD_SUBTRACT)
        approach(distance_step);
    else if (key == '0' || key == WXK_NUMPAD0)
        reset_camera();
    else if (key == WXK_LEFT || key == WXK_RIGHT)
        orbit(key == WXK_LEFT ? -key_degrees : key_degrees, 0);
    else if (key == WXK_UP || key == WXK_DOWN)
        orbit(0, key == WXK_UP ? key_degrees : -key_degrees);
    else
        event.Skip();
}

void Preview_canvas::paint()
{
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)));
    dc.Clear();
    const wxSize size = GetClientSize();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (m_picture && context) {
        const int picture_side = std::min(size.x, size.y);
        context->SetInterpolationQuality(wxINTERPOLATION_GOOD);
        context->DrawBitmap(m_bitmap, (size.x - picture_side) / 2.0, (size.y - picture_side) / 2.0,
                            picture_side, picture_side);
    }
    dc.SetFont(GetFont());
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    dc.DrawLabel(to_text(m_text), wxRect(size).Deflate(FromDIP(margin)));
}

} // namespace reference_host
