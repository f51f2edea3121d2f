// Pictures of the window for its readers: made where TOVIRAEXPORT_PICTURES names a folder.
#include "tests/window/program_window.h"

#include "reference_host/window/graph_page.h"

#include <cstdlib>

namespace QZ
{
namespace TEST
{
namespace
{

using Pictures = Program_window;

}

TEST_F(Pictures, of_each_tab)
{
    if (!std::getenv("TOVIRAEXPORT_PICTURES"))
        GTEST_SKIP() << "TOVIRAEXPORT_PICTURES names no folder";
    start(wxSize(1024, 700));
    open(sample("wood_textured"), "Custom CgFX");
    take_picture("code");
    press_key("Control_L", "1");
    ASSERT_TRUE(wait_until([this] { return window().graph().layout().width > 0; }));
    take_picture("graph");
}

} // namespace TEST
} // namespace QZ
