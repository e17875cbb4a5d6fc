// The documents' examples are what the program makes.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/docs/documented_session.h"
#include "tests/docs/examples_folder.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/support/narrow_text.h"

namespace kvn::docs {
namespace {

std::wstring Path(const std::string& name) {
    std::string path = ExamplesFolder() + name;
    std::replace(path.begin(), path.end(), '/', '\\');
    return {path.begin(), path.end()};
}

std::set<std::string> ExamplesThatAreKept() {
    std::set<std::string> names;
    for (const std::wstring& name : end_to_end::FilesIn(Path(""))) names.insert(test::Narrow(name));
    return names;
}

TEST_F(DocumentedSessionTest, MakesTheExamplesOfTheDocuments) {
    RunSession();
    std::set<std::string> made;
    for (const auto& [name, bytes] : ExamplesOfSession()) {
        made.insert(name);
        if (writesExamples) end_to_end::WriteFileBytes(Path(name), bytes);
        EXPECT_EQ(end_to_end::ReadFileBytes(Path(name)), bytes) << name << " is stale: run scripts/examples";
    }
    EXPECT_EQ(ExamplesThatAreKept(), made);
}

}  // namespace
}  // namespace kvn::docs
