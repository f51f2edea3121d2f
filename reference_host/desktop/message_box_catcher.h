// Catches message boxes before they appear. wxWidgets 3 has a hook for this; with 2.8 GTK's modal
// run is replaced.
#ifndef REFERENCE_HOST_DESKTOP_MESSAGE_BOX_CATCHER_H
#define REFERENCE_HOST_DESKTOP_MESSAGE_BOX_CATCHER_H

#include <memory>

namespace reference_host
{

class Message_box_answers;

// While it lives, every message box goes to the answers, which must outlive it.
class Message_box_catcher
{
public:
    explicit Message_box_catcher(Message_box_answers& answers);
    ~Message_box_catcher();

private:
    struct Hook;
    std::unique_ptr<Hook> m_hook;
};

} // namespace reference_host

#endif
