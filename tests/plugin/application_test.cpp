// The application object that the library makes for wx.
#include "plugin/exporter_plugin_app.h"
#include "tests/support/wx_test_main.h"

#include <memory>

namespace QZ
{
namespace TEST
{

class Application_object : public Wx_test
{
};

TEST_F(Application_object, is_made_by_the_factory_and_starts_at_once)
{
    wxAppConsole* const running = wxApp::GetInstance();
    std::unique_ptr<wxAppConsole> made(TOVIRAEXPORT::wxCreateApp());
    EXPECT_NE(dynamic_cast<TOVIRAEXPORT::Exporter_plugin_app*>(made.get()), nullptr);
    EXPECT_EQ(static_cast<wxAppConsole*>(&TOVIRAEXPORT::wxGetApp()), made.get());
    EXPECT_TRUE(made->OnInit());
    made.reset(); // takes the instance along
    wxApp::SetInstance(running);
}

} // namespace TEST
} // namespace QZ
