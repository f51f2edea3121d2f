// The answers that tests give to message boxes.
#include "tests/support/message_boxes.h"

#include "tests/support/wx_test_main.h"

#include <gmock/gmock.h>

#include <wx/msgdlg.h>

namespace QZ
{
namespace TEST
{

using ::testing::ElementsAre;

class Message_boxes_test : public Wx_test
{
};

TEST_F(Message_boxes_test, record_what_was_shown_and_answer_in_order)
{
    Message_boxes boxes({wxID_NO, wxID_YES});
    wxMessageDialog question(nullptr, wxT("Really?"), wxT("Question"), wxYES_NO);
    EXPECT_EQ(question.ShowModal(), wxID_NO);
    EXPECT_EQ(question.ShowModal(), wxID_YES);
    EXPECT_THAT(boxes.shown(), ElementsAre(Message_box{"Question", "Really?", wxYES_NO},
                                           Message_box{"Question", "Really?", wxYES_NO}));
}

} // namespace TEST
} // namespace QZ
