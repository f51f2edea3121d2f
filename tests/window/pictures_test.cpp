// Pictures of the window for its readers: made where TOVIRAEXPORT_PICTURES names a folder, of a
// sample in the folder that TOVIRAEXPORT_DOCUMENTS names.
#include "tests/window/program_window.h"

#include "reference_host/window/graph_page.h"
#include "reference_host/window/preview_page.h"
#include "reference_host/window/text_view.h"

#include <cstdio>
#include <cstdlib>

namespace QZ
{
namespace TEST
{
namespace
{

using Pictures = Program_window;

// That of the README's pictures, or what TOVIRAEXPORT_PICTURE_SIZE says: "1024x700".
wxSize picture_size()
{
    wxSize size(1280, 768);
    if (const char* wanted = std::getenv("TOVIRAEXPORT_PICTURE_SIZE"))
        std::sscanf(wanted, "%dx%d", &size.x, &size.y);
    return size;
}

} // namespace

TEST_F(Pictures, of_each_tab)
{
    if (!std::getenv("TOVIRAEXPORT_PICTURES"))
        GTEST_SKIP() << "TOVIRAEXPORT_PICTURES names no folder";
    start(picture_size());
    const char* documents = std::getenv("TOVIRAEXPORT_DOCUMENTS");
    open(documents ? documents + std::string("/wood_textured.mtlx") : sample("wood_textured"),
         "Custom CgFX");
    take_picture("code");
    press_key("Control_L", "1");
    ASSERT_TRUE(wait_until([this] { return window().graph().layout().width > 0; }));
    take_picture("graph");
    press_key("Control_L", "2");
    ASSERT_TRUE(wait_until([this] { return window().preview().is_fine(); }));
    take_picture("preview");
    press_key("Control_L", "4");
    ASSERT_TRUE(wait_until([this] { return window().source().IsShownOnScreen(); }));
    take_picture("document");
}

} // namespace TEST
} // namespace QZ
