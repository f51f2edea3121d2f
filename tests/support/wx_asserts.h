// Debug checks of wx: every one that fails during a test fails the test.
#ifndef TESTS_SUPPORT_WX_ASSERTS_H
#define TESTS_SUPPORT_WX_ASSERTS_H

namespace QZ
{
namespace TEST
{

// Counts the debug checks that fail from now on. An application sets a handler of its own when it
// starts; this is called again then.
void watch_wx_asserts();

// Lets the running test fail when a debug check fails. Called once, by the main function.
void fail_tests_on_wx_asserts();

// How many debug checks of wx have failed since the program began.
int wx_assert_count();

} // namespace TEST
} // namespace QZ

#endif
