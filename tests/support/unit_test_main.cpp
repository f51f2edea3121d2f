// The main function of the test programs that need no display and no running wx. There is none to
// be had, so that a test that comes to need one fails.
#include "tests/support/wx_asserts.h"

#include <gmock/gmock.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    ::unsetenv("DISPLAY");
    ::testing::InitGoogleMock(&argc, argv);
    QZ::TEST::fail_tests_on_wx_asserts();
    return RUN_ALL_TESTS();
}
