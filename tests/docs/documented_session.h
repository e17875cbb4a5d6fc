// One session of the page and the service's double, and its results as the documents show them.
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
    // Begins with a mouse that the page has never seen.
    void SetUp() override { EndToEndTest::SetUp(); }

    // Runs from opening the page to its OK; then the service has ended.
    void RunSession();
    Examples ExamplesOfSession() const;

private:
    void ReturnToInitialValues(const end_to_end::Sheet& sheet) const;
    static void AssignKeys(const end_to_end::Sheet& sheet);
    void AddGestures(const end_to_end::Sheet& sheet);
    static void TieNotepad(const end_to_end::Sheet& sheet);

    // Lines of the service's log without their times. Equal lines in a row count once.
    std::vector<std::string> LogLines() const;
};

}  // namespace kvn::docs
