#include "tests/support/wx_asserts.h"

#include <gtest/gtest.h>

#include <cstdio>

#include <wx/defs.h>
#if wxCHECK_VERSION(3, 0, 0)
#include <wx/debug.h>
#include <wx/string.h>
#endif

namespace QZ
{
namespace TEST
{

namespace
{

int assert_count = 0;

class Assert_listener : public ::testing::EmptyTestEventListener
{
    void OnTestStart(const ::testing::TestInfo&) override { m_count_before = assert_count; }

    void OnTestEnd(const ::testing::TestInfo&) override
    {
        EXPECT_EQ(assert_count, m_count_before) << "debug checks of wx failed";
    }

    int m_count_before = 0;
};

#if wxCHECK_VERSION(3, 0, 0)

void count_assert(const wxString& file, int line, const wxString&, const wxString& condition,
                  const wxString& message)
{
    ++assert_count;
    std::fprintf(stderr, "wx assert: %s:%d: %s: %s\n", static_cast<const char*>(file.utf8_str()),
                 line, static_cast<const char*>(condition.utf8_str()),
                 static_cast<const char*>(message.utf8_str()));
}

#endif

} // namespace

void watch_wx_asserts()
{
#if wxCHECK_VERSION(3, 0, 0) // a release build of 2.8 has no debug checks
    wxSetAssertHandler(count_assert);
#endif
}

void fail_tests_on_wx_asserts()
{
    ::testing::UnitTest::GetInstance()->listeners().Append(new Assert_listener);
    watch_wx_asserts();
}

int wx_assert_count()
{
    return assert_count;
}

} // namespace TEST
} // namespace QZ
