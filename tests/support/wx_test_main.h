// wxWidgets for test programs: their main function is in wx_test_main.cpp.
//
// Every debug check of wx that fails during a test fails the test. A display is needed only from
// start_wx() on; without one (no DISPLAY in the environment) a private Xvfb is started, and ended
// with the program.
#ifndef TESTS_SUPPORT_WX_TEST_MAIN_H
#define TESTS_SUPPORT_WX_TEST_MAIN_H

#include <gtest/gtest.h>

namespace QZ
{
namespace TEST
{

// Starts wx with an application object, once; later calls do nothing. Ends the program with a
// message when there is no display.
void start_wx();

// The fixture of tests that make windows.
class Wx_test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { start_wx(); }
};

} // namespace TEST
} // namespace QZ

#endif
