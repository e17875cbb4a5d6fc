// One session of the page and the stand-in service, and what it leaves behind as the documents show it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/end_to_end/gesture_story.h"

namespace kvn::docs {

// File names in the folder of examples, and their bytes.
using Examples = std::map<std::string, std::string>;

class DocumentedSessionTest : public end_to_end::GestureStory {
protected:
    // A mouse that the page has never seen.
    void SetUp() override { EndToEndTest::SetUp(); }

    // From the page's opening to its OK; the service has ended afterwards.
    void RunSession();
    Examples ExamplesOfSession() const;

private:
    void ReturnToInitialValues(const end_to_end::Sheet& sheet) const;
    static void AssignKeys(const end_to_end::Sheet& sheet);
    void AddGestures(const end_to_end::Sheet& sheet);
    static void TieNotepad(const end_to_end::Sheet& sheet);

    // Lines of the service's log without their times. Of equal ones in a row there is one.
    std::vector<std::string> LogLines() const;
};

}  // namespace kvn::docs
